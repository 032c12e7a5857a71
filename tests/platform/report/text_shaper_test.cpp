#include "platform/report/text_shaper.h"

#include "support/widgets.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QRawFont>
#include <QTest>

using namespace report;
using namespace Qt::StringLiterals;

namespace {

ControlDesign field(int width, Align align, int style = Plain, int height = 300)
{
    return {Kind::Field, u"Cell", u"Column", 0, 0, width, height, 12, align, style};
}

/// Each by a shaper of its own: a shaper knows controls by their place in the design.
ShapedText shape(const ControlDesign& control, const QString& text)
{
    return TextShaper(u"David").shaped(control, text);
}

} // namespace

class TextShaperTest : public QObject
{
    Q_OBJECT

private slots:
    void takesTheHebrewFamily();
    void standsWhereItIsAligned_data();
    void standsWhereItIsAligned();
    void standsInTheMiddleOfItsHeight();
    void condensesANumberThatIsTooWide_data();
    void condensesANumberThatIsTooWide();
    void cutsANumberWithAnEllipsis();
    void cutsALetterTextAtItsLogicalEnd_data();
    void cutsALetterTextAtItsLogicalEnd();
    void keepsFromTheBordersOfABox();
    void keepsFromTheCaptionBesideIt();
    void breaksWhereTheControlIsHighEnough();
    void condensesWhatTheLinesDoNotHold();
    void mirrorsBracketsByTheirOwnGlyphs();
    void setsGlyphsFromTheLeft();
    void showsNothingForAnEmptyText();
};

void TextShaperTest::takesTheHebrewFamily()
{
    // Without the family the measures of this test mean nothing.
    QVERIFY(QFontInfo(QFont(u"David"_s)).family().startsWith(u"David"_s));
}

void TextShaperTest::standsWhereItIsAligned_data()
{
    QTest::addColumn<Align>("align");
    QTest::addColumn<double>("share"); // of what the text leaves of the width, to its left
    QTest::newRow("left") << Align::Left << 0.0;
    QTest::newRow("right") << Align::Right << 1.0;
    QTest::newRow("centre") << Align::Centre << 0.5;
}

void TextShaperTest::standsWhereItIsAligned()
{
    QFETCH(Align, align);
    QFETCH(double, share);
    for (const QString& text : {u"12.5"_s, u"לבן"_s, u"רשת 120 PVC"_s}) {
        for (const int style : {int(Plain), int(RightToLeft)}) {
            const ControlDesign control = field(3000, align, style);
            const ShapedText shaped = shape(control, text);
            QCOMPARE(shaped.lines.size(), 1u);
            QCOMPARE(shaped.lines[0].corner.x(), (3000 - shaped.lines[0].width) * share);
            QCOMPARE(shaped.fit, Fit());
        }
    }
}

void TextShaperTest::standsInTheMiddleOfItsHeight()
{
    const double line = QFontMetricsF(twipFont(u"David"_s, 12, false)).height();
    for (const int height : {200, 300, 400}) { // lower than the line, higher, much higher
        const ShapedText shaped = shape(field(3000, Align::Right, Plain, height), u"12.5"_s);
        QCOMPARE(shaped.lines[0].corner.y(), (height - line) / 2);
    }
    // The line of a text that is set smaller is lower, and in the middle too.
    const ShapedText smaller = shape(field(500, Align::Right), u"268.325"_s);
    QVERIFY(smaller.fit.size < 100);
    QCOMPARE(smaller.lines[0].corner.y(), (300 - line * smaller.fit.vertical()) / 2);
}

void TextShaperTest::condensesANumberThatIsTooWide_data()
{
    QTest::addColumn<Align>("align");
    QTest::addColumn<int>("style");
    QTest::newRow("right") << Align::Right << int(Boxed);
    QTest::newRow("centre") << Align::Centre << int(Plain);
    QTest::newRow("centre, right to left") << Align::Centre << int(RightToLeft);
    QTest::newRow("right, right to left") << Align::Right << int(RightToLeft);
}

void TextShaperTest::condensesANumberThatIsTooWide()
{
    QFETCH(Align, align);
    QFETCH(int, style);
    const QFont font = twipFont(u"David"_s, 12, false);
    for (const QString& text : {u"999.99"_s, u"-268.25"_s, u"268.325"_s}) {
        const ControlDesign control = field(560, align, style);
        const double available = style == Boxed ? 480 : 560;
        const ShapedText shaped = shape(control, text);
        const ShapedLine& line = shaped.lines[0];
        const double natural = textWidth(text, false, font);
        QVERIFY(natural > 560);
        QCOMPARE(line.text, text);
        QCOMPARE(shaped.fit, fitted(natural, available));
        QVERIFY(!shaped.fit.isCut);
        QCOMPARE(line.width, natural * shaped.fit.horizontal());
        QVERIFY(line.width <= available && line.width > available * 0.95);
        const double right = style == Boxed ? 520 : 560;
        QCOMPARE(line.corner.x(),
                 align == Align::Right ? right - line.width : (560 - line.width) / 2);
    }
}

void TextShaperTest::cutsANumberWithAnEllipsis()
{
    for (const Align align : {Align::Left, Align::Right, Align::Centre}) {
        const ShapedText shaped = shape(field(600, align), u"0.333333333333333"_s);
        const ShapedLine& line = shaped.lines[0];
        QVERIFY(shaped.fit.isCut);
        QCOMPARE(shaped.fit.stretch, 75);
        QCOMPARE(shaped.fit.size, 100);
        QVERIFY2(line.text.endsWith(u'…'), qPrintable(line.text));
        QVERIFY(line.text.size() >= 5 && u"0.333333333333333"_s.startsWith(line.text.chopped(1)));
        QVERIFY(line.width <= 600);
        // One character more would not have fitted.
        const QString longer = u"0.333333333333333"_s.first(line.text.size()) + u'…';
        QVERIFY(textWidth(longer, false, twipFont(u"David"_s, 12, false)) * 0.75 > 600);
        const double share = align == Align::Left ? 0 : align == Align::Right ? 1 : 0.5;
        QCOMPARE(line.corner.x(), (600 - line.width) * share);
    }
}

void TextShaperTest::cutsALetterTextAtItsLogicalEnd_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("style");
    QTest::addColumn<bool>("endsAtTheLeft");
    const QString hebrew = u"בלגי מחוזק כפול ארוך מאוד עם עוד מילים רבות"_s;
    const QString latin = u"White matt finish of the finest kind there is"_s;
    QTest::newRow("Hebrew, right to left") << hebrew << int(RightToLeft) << true;
    QTest::newRow("Hebrew, left to right") << hebrew << int(Plain) << true;
    QTest::newRow("Latin, left to right") << latin << int(Plain) << false;
    QTest::newRow("Latin, right to left") << latin << int(RightToLeft) << false;
    QTest::newRow("Hebrew with a Latin end")
        << u"ירוק בקבוק מטלי RAL 6005 with a long English end"_s << int(RightToLeft) << true;
}

void TextShaperTest::cutsALetterTextAtItsLogicalEnd()
{
    QFETCH(QString, text);
    QFETCH(int, style);
    QFETCH(bool, endsAtTheLeft);
    const QList<quint32> dots =
        QRawFont::fromFont(twipFont(u"David"_s, 12, false)).glyphIndexesForString(u"…"_s);
    const ShapedText shaped = shape(field(1300, Align::Right, style), text);
    const ShapedLine& line = shaped.lines[0];
    QVERIFY(shaped.fit.isCut);
    const qsizetype kept = line.text.indexOf(u'…');
    QVERIFY2(kept >= 10 && text.startsWith(line.text.first(kept)), qPrintable(line.text));
    QVERIFY(line.width <= 1300);
    QCOMPARE(line.corner.x(), 1300 - line.width);
    const auto& edge = endsAtTheLeft ? line.glyphs.front().run : line.glyphs.back().run;
    const QList<quint32> glyphs = edge.glyphIndexes();
    const qsizetype at = glyphs.indexOf(dots.value(0));
    QVERIFY(at >= 0);
    // A direction mark, which has no width, may stand at either side of it.
    QVERIFY(endsAtTheLeft ? at <= 1 : at >= glyphs.size() - 2);
}

void TextShaperTest::keepsFromTheBordersOfABox()
{
    const ControlDesign box = field(600, Align::Right, Boxed);
    const ShapedText shaped = shape(box, u"12.5"_s);
    QCOMPARE(shaped.lines[0].corner.x(), 600 - shaped.lines[0].width - 40);
    const ShapedText tight = shape(box, u"118.75"_s);
    QCOMPARE(tight.lines[0].text, u"118.75"_s);
    QVERIFY(tight.fit.stretch < 100 && tight.fit.size == 100);
    QVERIFY(tight.lines[0].corner.x() >= 40 && tight.lines[0].corner.x() < 50);
}

void TextShaperTest::keepsFromTheCaptionBesideIt()
{
    // The caption's box begins 30 twips before the value's ends.
    static constexpr ControlDesign controls[] = {
        {Kind::Field, u"Value", u"Column", 0, 0, 500, 300, 12, Align::Centre, RightToLeft},
        {Kind::Label, u"Caption", u"חיתוך U", 470, 0, 900, 300, 12, Align::Left,
         Bold | RightToLeft}};
    static constexpr SectionDesign sections[] = {{u"Row", Role::Detail, 300, controls}};
    TextShaper shaper(u"David", sections);
    // It stays in the middle: the text may be 2 * (470 - 40 - 250) wide.
    const ShapedText condensed = shaper.shaped(controls[0], u"102.4"_s);
    QVERIFY(condensed.fit.stretch < 100);
    QVERIFY(condensed.lines[0].width <= 360 && condensed.lines[0].width > 340);
    QCOMPARE(condensed.lines[0].corner.x(), 250 - condensed.lines[0].width / 2);
    const ShapedText narrow = shaper.shaped(controls[0], u"26"_s);
    QCOMPARE(narrow.fit, Fit());
    // The caption itself stays where it is.
    QCOMPARE(shaper.shaped(controls[1], u"חיתוך U"_s).lines[0].corner.x(), 0.0);
}

void TextShaperTest::breaksWhereTheControlIsHighEnough()
{
    const QString text = u"מונובלוק מיוחד : 20 מכסה 15"_s;
    const ControlDesign cell = field(1800, Align::Centre, RightToLeft, 606);
    const ShapedText two = shape(cell, text);
    QCOMPARE(two.lines.size(), 2u);
    QCOMPARE(two.fit, Fit());
    QCOMPARE(two.lines[0].text + u' ' + two.lines[1].text, text);
    const double height = QFontMetricsF(twipFont(u"David"_s, 12, false)).height();
    QCOMPARE(two.lines[0].corner.y(), 303 - height);
    QCOMPARE(two.lines[1].corner.y(), 303.0);
    for (const ShapedLine& line : two.lines)
        QCOMPARE(line.corner.x(), (1800 - line.width) / 2);
    // A low control has one line.
    const ControlDesign low = field(1800, Align::Centre, RightToLeft, 300);
    QCOMPARE(shape(low, text).lines.size(), 1u);
}

void TextShaperTest::condensesWhatTheLinesDoNotHold()
{
    const QString text = u"מונובלוק מיוחד : 20 מכסה 15 מונובלוק מיוחד"_s;
    const ControlDesign cell = field(1800, Align::Centre, RightToLeft, 606);
    const ShapedText two = shape(cell, text);
    QCOMPARE(two.lines.size(), 2u);
    QVERIFY(!two.fit.isCut && two.fit.stretch < 100);
    QCOMPARE(two.lines[0].text + u' ' + two.lines[1].text, text);
    for (const ShapedLine& line : two.lines)
        QVERIFY(line.width <= 1800);
    // What does not fit at the smallest size either is cut from the second line.
    const ShapedText cut = shape(cell, text + u' ' + text + u' ' + text);
    QCOMPARE(cut.lines.size(), 2u);
    QVERIFY(cut.fit.isCut);
    QVERIFY(!cut.lines[0].text.contains(u'…'));
    QVERIFY(cut.lines[1].text.contains(u'…'));
    QVERIFY(cut.lines[1].width <= 1800);
}

void TextShaperTest::mirrorsBracketsByTheirOwnGlyphs()
{
    const ShapedText shaped = shape(field(5000, Align::Right, RightToLeft), u"(חדש)"_s);
    const QList<quint32> brackets =
        QRawFont::fromFont(twipFont(u"David"_s, 12, false)).glyphIndexesForString(u"()"_s);
    const auto& pieces = shaped.lines[0].glyphs;
    QCOMPARE(pieces.size(), 3u);
    // At the left stands the end of the text: the glyph of ")", drawn the other way round.
    QCOMPARE(pieces[0].run.glyphIndexes(), QList<quint32>{brackets.at(1)});
    QVERIFY(pieces[0].mirroredFrom.has_value());
    QVERIFY(!pieces[1].mirroredFrom.has_value());
    QCOMPARE(pieces[2].run.glyphIndexes(), QList<quint32>{brackets.at(0)});
    QVERIFY(pieces[2].mirroredFrom.value() > pieces[0].mirroredFrom.value());
    QVERIFY(qAbs(pieces[2].mirroredFrom.value() - shaped.lines[0].width) < 1);
    // From left to right they are what they look like.
    for (const GlyphPiece& piece : shape(field(5000, Align::Left), u"(new)"_s).lines[0].glyphs)
        QVERIFY(!piece.mirroredFrom.has_value());
}

void TextShaperTest::setsGlyphsFromTheLeft()
{
    const ControlDesign control = field(5000, Align::Right, RightToLeft);
    const ShapedText shaped = shape(control, u"רשת 120 PVC לבן -5"_s);
    double last = -1;
    int glyphs = 0;
    for (const GlyphPiece& piece : shaped.lines[0].glyphs) {
        for (const QPointF& position : piece.run.positions()) {
            QVERIFY(position.x() >= last);
            last = position.x();
            ++glyphs;
        }
    }
    QCOMPARE(glyphs, 19); // 18 characters and the direction mark before the sign
}

void TextShaperTest::showsNothingForAnEmptyText()
{
    const ControlDesign control = field(600, Align::Centre, Boxed);
    const ShapedText shaped = shape(control, QString());
    QCOMPARE(shaped.lines.size(), 1u);
    QVERIFY(shaped.lines[0].glyphs.empty());
}

ZOMREL_QTEST_MAIN(TextShaperTest)
#include "text_shaper_test.moc"
