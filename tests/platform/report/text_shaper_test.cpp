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

/// Shapes a text with a new shaper, because a shaper identifies controls by their address.
ShapedText shape(const ControlDesign& control, const QString& text)
{
    return TextShaper(u"David").shaped(control, text);
}

} // namespace

class TextShaperTest : public QObject
{
    Q_OBJECT

private slots:
    void hebrewFontFamily_isInstalled();
    void line_isAlignedHorizontally_data();
    void line_isAlignedHorizontally();
    void text_isCentredVertically();
    void tooWideNumber_isCondensed_data();
    void tooWideNumber_isCondensed();
    void tooLongNumber_endsWithAnEllipsis();
    void tooLongText_hasItsEllipsisAtTheLogicalEnd_data();
    void tooLongText_hasItsEllipsisAtTheLogicalEnd();
    void boxedText_keepsClearOfItsBorders();
    void fieldText_keepsClearOfAnAdjacentCaption();
    void highControl_breaksTheText();
    void tooLongBrokenText_isCondensedThenTruncated();
    void rightToLeftBrackets_areMirroredGlyphs();
    void glyphs_areOrderedFromTheLeft();
    void emptyText_hasNoGlyphs();
};

void TextShaperTest::hebrewFontFamily_isInstalled()
{
    // Without this font family, the measurements of this test are meaningless.
    QVERIFY(QFontInfo(QFont(u"David"_s)).family().startsWith(u"David"_s));
}

void TextShaperTest::line_isAlignedHorizontally_data()
{
    QTest::addColumn<Align>("align");
    // Share of the remaining width that is to the left of the text.
    QTest::addColumn<double>("share");
    QTest::newRow("left") << Align::Left << 0.0;
    QTest::newRow("right") << Align::Right << 1.0;
    QTest::newRow("centre") << Align::Centre << 0.5;
}

void TextShaperTest::line_isAlignedHorizontally()
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

void TextShaperTest::text_isCentredVertically()
{
    const double line = QFontMetricsF(twipFont(u"David"_s, 12, false)).height();
    for (const int height : {200, 300, 400}) { // Lower than the line, higher, and much higher.
        const ShapedText shaped = shape(field(3000, Align::Right, Plain, height), u"12.5"_s);
        QCOMPARE(shaped.lines[0].corner.y(), (height - line) / 2);
    }
    // A text of reduced size has a lower line, which is vertically centred, too.
    const ShapedText smaller = shape(field(500, Align::Right), u"268.325"_s);
    QVERIFY(smaller.fit.size < 100);
    QCOMPARE(smaller.lines[0].corner.y(), (300 - line * smaller.fit.vertical()) / 2);
}

void TextShaperTest::tooWideNumber_isCondensed_data()
{
    QTest::addColumn<Align>("align");
    QTest::addColumn<int>("style");
    QTest::newRow("right") << Align::Right << int(Boxed);
    QTest::newRow("centre") << Align::Centre << int(Plain);
    QTest::newRow("centre, right to left") << Align::Centre << int(RightToLeft);
    QTest::newRow("right, right to left") << Align::Right << int(RightToLeft);
}

void TextShaperTest::tooWideNumber_isCondensed()
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

void TextShaperTest::tooLongNumber_endsWithAnEllipsis()
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
        // One more character would not fit.
        const QString longer = u"0.333333333333333"_s.first(line.text.size()) + u'…';
        QVERIFY(textWidth(longer, false, twipFont(u"David"_s, 12, false)) * 0.75 > 600);
        const double share = align == Align::Left ? 0 : align == Align::Right ? 1 : 0.5;
        QCOMPARE(line.corner.x(), (600 - line.width) * share);
    }
}

void TextShaperTest::tooLongText_hasItsEllipsisAtTheLogicalEnd_data()
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

void TextShaperTest::tooLongText_hasItsEllipsisAtTheLogicalEnd()
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
    // A direction mark without width may precede or follow the ellipsis.
    QVERIFY(endsAtTheLeft ? at <= 1 : at >= glyphs.size() - 2);
}

void TextShaperTest::boxedText_keepsClearOfItsBorders()
{
    const ControlDesign box = field(600, Align::Right, Boxed);
    const ShapedText shaped = shape(box, u"12.5"_s);
    QCOMPARE(shaped.lines[0].corner.x(), 600 - shaped.lines[0].width - 40);
    const ShapedText tight = shape(box, u"118.75"_s);
    QCOMPARE(tight.lines[0].text, u"118.75"_s);
    QVERIFY(tight.fit.stretch < 100 && tight.fit.size == 100);
    QVERIFY(tight.lines[0].corner.x() >= 40 && tight.lines[0].corner.x() < 50);
}

void TextShaperTest::fieldText_keepsClearOfAnAdjacentCaption()
{
    // The caption's box starts 30 twips before the end of the value.
    static constexpr ControlDesign controls[] = {
        {Kind::Field, u"Value", u"Column", 0, 0, 500, 300, 12, Align::Centre, RightToLeft},
        {Kind::Label, u"Caption", u"חיתוך U", 470, 0, 900, 300, 12, Align::Left,
         Bold | RightToLeft}};
    static constexpr SectionDesign sections[] = {{u"Row", Role::Detail, 300, controls}};
    TextShaper shaper(u"David", sections);
    // A centred text may be 2 * (470 - 40 - 250) twips wide.
    const ShapedText condensed = shaper.shaped(controls[0], u"102.4"_s);
    QVERIFY(condensed.fit.stretch < 100);
    QVERIFY(condensed.lines[0].width <= 360 && condensed.lines[0].width > 340);
    QCOMPARE(condensed.lines[0].corner.x(), 250 - condensed.lines[0].width / 2);
    const ShapedText narrow = shaper.shaped(controls[0], u"26"_s);
    QCOMPARE(narrow.fit, Fit());
    // The position of the caption does not change.
    QCOMPARE(shaper.shaped(controls[1], u"חיתוך U"_s).lines[0].corner.x(), 0.0);
}

void TextShaperTest::highControl_breaksTheText()
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

void TextShaperTest::tooLongBrokenText_isCondensedThenTruncated()
{
    const QString text = u"מונובלוק מיוחד : 20 מכסה 15 מונובלוק מיוחד"_s;
    const ControlDesign cell = field(1800, Align::Centre, RightToLeft, 606);
    const ShapedText two = shape(cell, text);
    QCOMPARE(two.lines.size(), 2u);
    QVERIFY(!two.fit.isCut && two.fit.stretch < 100);
    QCOMPARE(two.lines[0].text + u' ' + two.lines[1].text, text);
    for (const ShapedLine& line : two.lines)
        QVERIFY(line.width <= 1800);
    // A text that does not fit even at the smallest size is truncated in the second line.
    const ShapedText cut = shape(cell, text + u' ' + text + u' ' + text);
    QCOMPARE(cut.lines.size(), 2u);
    QVERIFY(cut.fit.isCut);
    QVERIFY(!cut.lines[0].text.contains(u'…'));
    QVERIFY(cut.lines[1].text.contains(u'…'));
    QVERIFY(cut.lines[1].width <= 1800);
}

void TextShaperTest::rightToLeftBrackets_areMirroredGlyphs()
{
    const ShapedText shaped = shape(field(5000, Align::Right, RightToLeft), u"(חדש)"_s);
    const QList<quint32> brackets =
        QRawFont::fromFont(twipFont(u"David"_s, 12, false)).glyphIndexesForString(u"()"_s);
    const auto& pieces = shaped.lines[0].glyphs;
    QCOMPARE(pieces.size(), 3u);
    // The leftmost piece is the end of the text: the glyph of ")", mirrored.
    QCOMPARE(pieces[0].run.glyphIndexes(), QList<quint32>{brackets.at(1)});
    QVERIFY(pieces[0].mirroredFrom.has_value());
    QVERIFY(!pieces[1].mirroredFrom.has_value());
    QCOMPARE(pieces[2].run.glyphIndexes(), QList<quint32>{brackets.at(0)});
    QVERIFY(pieces[2].mirroredFrom.value() > pieces[0].mirroredFrom.value());
    QVERIFY(qAbs(pieces[2].mirroredFrom.value() - shaped.lines[0].width) < 1);
    // In left-to-right text, brackets are not mirrored.
    const ShapedText latin = shape(field(5000, Align::Left), u"(new)"_s);
    for (const GlyphPiece& piece : latin.lines[0].glyphs)
        QVERIFY(!piece.mirroredFrom.has_value());
}

void TextShaperTest::glyphs_areOrderedFromTheLeft()
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
    QCOMPARE(glyphs, 19); // 18 characters and the direction mark before the sign.
}

void TextShaperTest::emptyText_hasNoGlyphs()
{
    const ControlDesign control = field(600, Align::Centre, Boxed);
    const ShapedText shaped = shape(control, QString());
    QCOMPARE(shaped.lines.size(), 1u);
    QVERIFY(shaped.lines[0].glyphs.empty());
}

ZOMREL_QTEST_MAIN(TextShaperTest)
#include "text_shaper_test.moc"
