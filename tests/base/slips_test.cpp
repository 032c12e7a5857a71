#include "base/slips.h"

#include "base/input_boxes.h"

#include "support/widgets.h"

#include <QTest>

using namespace Qt::StringLiterals;

class SlipsTest : public QObject
{
    Q_OBJECT

private slots:
    void plainDigits_haveNoSlip_data();
    void plainDigits_haveNoSlip();
    void otherTexts_haveASlip_data();
    void otherTexts_haveASlip();
    void typedPoint_tintsTheBoxAtOnceAndKeepsTheText();
    void correctedText_takesTheTintAway();
    void disabledBox_hasItsUsualColoursAfterTheCorrection();
};

namespace {

QColor baseOf(const QWidget& box)
{
    return box.palette().color(QPalette::Active, QPalette::Base);
}

} // namespace

void SlipsTest::plainDigits_haveNoSlip_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"", "0", "00", "07", "85", "999"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void SlipsTest::plainDigits_haveNoSlip()
{
    QFETCH(QString, text);
    QCOMPARE(base::slipIn(text), QString());
}

void SlipsTest::otherTexts_haveASlip_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isNumber");
    QTest::newRow("point") << u"85."_s << true;
    QTest::newRow("blank") << u" 8"_s << true;
    QTest::newRow("minus") << u"-5"_s << true;
    QTest::newRow("exponent") << u"1e2"_s << true;
    QTest::newRow("letter") << u"8a"_s << false;
    QTest::newRow("Hebrew letter") << u"ש"_s << false;
    QTest::newRow("two points") << u"1.."_s << false;
    QTest::newRow("blank alone") << u" "_s << false;
}

void SlipsTest::otherTexts_haveASlip()
{
    QFETCH(QString, text);
    QFETCH(bool, isNumber);
    const QString slip = base::slipIn(text);
    QVERIFY(slip.contains(text));
    QCOMPARE(slip.contains(u"אינו מספר"_s), !isNumber);
}

void SlipsTest::typedPoint_tintsTheBoxAtOnceAndKeepsTheText()
{
    base::MeasureBox box(0, u"0"_s, base::MeasureBox::OnLeaving::FillDefaultAndPad);
    const QColor usual = baseOf(box);
    box.selectAll();
    QTest::keyClicks(&box, u"85"_s);
    QCOMPARE(baseOf(box), usual);
    QTest::keyClicks(&box, u".5"_s);
    QCOMPARE(box.text(), u"85."_s);
    QVERIFY(baseOf(box) != usual);
    QVERIFY(box.toolTip().contains(u"85."_s));
}

void SlipsTest::correctedText_takesTheTintAway()
{
    base::MeasureBox box(0, u"0"_s, base::MeasureBox::OnLeaving::FillDefaultAndPad);
    const QColor usual = baseOf(box);
    box.setText(u"8a"_s);
    QVERIFY(baseOf(box) != usual);
    QTest::keyClick(&box, Qt::Key_Backspace);
    QCOMPARE(box.text(), u"8"_s);
    QCOMPARE(baseOf(box), usual);
    QCOMPARE(box.toolTip(), QString());
}

void SlipsTest::disabledBox_hasItsUsualColoursAfterTheCorrection()
{
    base::MeasureBox box(0, u"0"_s, base::MeasureBox::OnLeaving::FillDefaultAndPad);
    const base::MeasureBox other(0, u"0"_s, base::MeasureBox::OnLeaving::FillDefaultAndPad);
    box.setText(u"8a"_s);
    box.setText(u"8"_s);
    box.setEnabled(false);
    for (const auto role : {QPalette::Text, QPalette::Base})
        QCOMPARE(box.palette().color(QPalette::Disabled, role),
                 other.palette().color(QPalette::Disabled, role));
}

ZOMREL_QTEST_MAIN(SlipsTest)
#include "slips_test.moc"
