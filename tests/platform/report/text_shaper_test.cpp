#include "platform/report/text_shaper.h"

#include "support/widgets.h"

#include <QFontInfo>
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
    void cutsANumberAtItsEnd_data();
    void cutsANumberAtItsEnd();
    void cutsALetterTextAtItsEnd_data();
    void cutsALetterTextAtItsEnd();
    void neverCutsACaptionOfTheDesign();
    void keepsFromTheBordersOfABox();
    void breaksWhereTheControlIsHighEnough();
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
            QCOMPARE(shaped.size(), 1u);
            QCOMPARE(shaped[0].corner.x(), (3000 - shaped[0].width) * share);
            QCOMPARE(shaped[0].corner.y(), 0.0);
        }
    }
}

void TextShaperTest::cutsANumberAtItsEnd_data()
{
    QTest::addColumn<Align>("align");
    QTest::addColumn<int>("style");
    QTest::newRow("right") << Align::Right << int(Boxed);
    QTest::newRow("centre") << Align::Centre << int(Plain);
    QTest::newRow("centre, right to left") << Align::Centre << int(RightToLeft);
    QTest::newRow("right, right to left") << Align::Right << int(RightToLeft);
}

void TextShaperTest::cutsANumberAtItsEnd()
{
    QFETCH(Align, align);
    QFETCH(int, style);
    const ControlDesign control = field(600, align, style);
    for (const QString& text : {u"1234567.891"_s, u"-123456.78"_s, u"0.333333333333333"_s}) {
        const ShapedText shaped = shape(control, text);
        QCOMPARE(shaped.size(), 1u);
        const QString kept = shaped[0].text;
        QVERIFY2(text.startsWith(kept), qPrintable(kept));
        QVERIFY(kept.size() >= 4 && kept.size() < text.size());
        QVERIFY(shaped[0].width <= 600);
        // One character more would not have fitted.
        const ControlDesign wide = field(6000, Align::Left, style);
        QVERIFY(shape(wide, text.first(kept.size() + 1))[0].width > 600);
        // It begins at the left edge, within a hair's breadth.
        const double left = shape(control, text)[0].corner.x();
        QVERIFY2(left >= 0 && left <= 20, qPrintable(QString::number(left)));
    }
}

void TextShaperTest::cutsALetterTextAtItsEnd_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("style");
    QTest::addColumn<bool>("beginsAtTheRight");
    const QString hebrew = u"בלגי מחוזק כפול ארוך"_s;
    const QString latin = u"White matt finish"_s;
    QTest::newRow("Hebrew, right to left") << hebrew << int(RightToLeft) << true;
    QTest::newRow("Hebrew, left to right") << hebrew << int(Plain) << true;
    QTest::newRow("Latin, left to right") << latin << int(Plain) << false;
    QTest::newRow("Latin, right to left") << latin << int(RightToLeft) << false;
    QTest::newRow("Hebrew and digits") << u"טריפלקס 6 מילימטר"_s << int(RightToLeft) << true;
    QTest::newRow("Latin and Hebrew") << u"PVC לבן מבריק"_s << int(RightToLeft) << true;
}

void TextShaperTest::cutsALetterTextAtItsEnd()
{
    QFETCH(QString, text);
    QFETCH(int, style);
    QFETCH(bool, beginsAtTheRight);
    for (const Align align : {Align::Left, Align::Right, Align::Centre}) {
        const ControlDesign control = field(900, align, style);
        const ShapedLine line = shape(control, text)[0];
        QVERIFY2(text.startsWith(line.text), qPrintable(line.text));
        QVERIFY(line.text.size() >= 5 && line.text.size() < text.size());
        QVERIFY(line.width <= 900);
        QCOMPARE(line.corner.x(), beginsAtTheRight ? 900 - line.width : 0.0);
    }
}

void TextShaperTest::neverCutsACaptionOfTheDesign()
{
    ControlDesign label{Kind::Label, u"Label4", u"דף מספר :", 0,           0,
                        400,         300,       14.25,        Align::Left, RightToLeft};
    const ShapedLine whole = shape(label, u"דף מספר :"_s)[0];
    QCOMPARE(whole.text, u"דף מספר :"_s);
    QCOMPARE(whole.corner.x(), 0.0);
    label.align = Align::Right;
    const ShapedLine right = shape(label, u"דף מספר :"_s)[0];
    QCOMPARE(right.corner.x(), 400 - right.width);
    // What is set at run time is cut.
    QVERIFY(shape(label, u"דף מספר 12 :"_s)[0].text.size() < 8);
}

void TextShaperTest::keepsFromTheBordersOfABox()
{
    const ControlDesign box = field(600, Align::Right, Boxed);
    const ShapedLine line = shape(box, u"12.5"_s)[0];
    QCOMPARE(line.corner.x(), 600 - line.width - 20);
    // 118.75 leaves hardly any room: what there is lies on both sides, and no digit is lost.
    const ShapedLine tight = shape(box, u"118.75"_s)[0];
    QCOMPARE(tight.text, u"118.75"_s);
    QVERIFY(tight.corner.x() > 0 && tight.corner.x() + tight.width < 600);
}

void TextShaperTest::breaksWhereTheControlIsHighEnough()
{
    const QString text = u"מונובלוק מיוחד : 20 מכסה 15"_s;
    const ControlDesign cell = field(1800, Align::Centre, RightToLeft, 606);
    const ShapedText two = shape(cell, text);
    QCOMPARE(two.size(), 2u);
    QCOMPARE(two[0].text + u' ' + two[1].text, text);
    QVERIFY(two[1].corner.y() > two[0].corner.y() + 200);
    for (const ShapedLine& line : two)
        QCOMPARE(line.corner.x(), (1800 - line.width) / 2);
    // What two lines do not hold is cut from the second.
    const ShapedText cut = shape(cell, text + u' ' + text + u' ' + text);
    QCOMPARE(cut.size(), 2u);
    QVERIFY(cut[1].width <= 1800);
    // A low control has one line.
    const ControlDesign low = field(1800, Align::Centre, RightToLeft, 300);
    QCOMPARE(shape(low, text).size(), 1u);
}

void TextShaperTest::setsGlyphsFromTheLeft()
{
    const ControlDesign control = field(5000, Align::Right, RightToLeft);
    const ShapedLine line = shape(control, u"רשת 120 PVC לבן -5"_s)[0];
    double last = -1;
    int glyphs = 0;
    for (const QGlyphRun& run : line.glyphs) {
        for (const QPointF& position : run.positions()) {
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
    QCOMPARE(shaped.size(), 1u);
    QVERIFY(shaped[0].glyphs.isEmpty());
}

ZOMREL_QTEST_MAIN(TextShaperTest)
#include "text_shaper_test.moc"
