#include "panel_host.h"

#include "base/input_boxes.h"
#include "base/module1.h"
#include "output/form_view.h"
#include "platform/controls/db_combo.h"
#include "platform/runtime/message_box.h"
#include "platform/runtime/run_time_error.h"
#include "support/widgets.h"

#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

void preCalculate(PanelHost& host)
{
    QTest::mouseClick(host.panel().CmdOK, Qt::LeftButton);
}

QStringList texts(const std::array<QLabel*, 4>& labels)
{
    QStringList result;
    for (const QLabel* label : labels)
        result.append(label->text());
    return result;
}

} // namespace

class PreCalculationTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void preCalculation_showsALineAndStoresNone();
    void zeroOpening_isComputed();
    void doorWithTwoSashes_showsFourAndStoresTwo();
    void monoblock_showsCutsOfTheReducedOpening();
    void toolTips_explainOpeningsAndCounts();
    void monoblockDoor_explainsItsFrameFromTheMonoblock();
    void kindsAndColours_areShown();
    void noKindsAndColours_showsEmptyTexts();
    void missingSeries_isRefusedBeforeTheBoxesAreRead();
    void secondPreCalculation_usesTheSameView();
    void openView_leavesTheOrderFormUsable();
    void addedLine_hasTheShownCuts();
    void deletedSeries_endsTheProgramWithoutShowingTheView();
    void badInputs_endTheProgram();
    void decimalCommaLocale_showsCommas();
};

void PreCalculationTest::cleanup()
{
    if (output::isFormViewLoaded())
        output::formView().Unload();
}

void PreCalculationTest::preCalculation_showsALineAndStoresNone()
{
    PanelHost host;
    host.chooseExample(2);
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    preCalculate(host);
    QCOMPARE(host.boxes.unexpected(), QStringList());
    QVERIFY(output::isFormViewLoaded());
    const output::FormView& view = output::formView();
    QVERIFY(view.isVisible());
    QVERIFY(!view.isModal());
    QCOMPARE(view.LabelName->text(), u"בלגי 7000"_s);
    QCOMPARE(view.LabelDate->text(), u"01/03/2026"_s);
    QCOMPARE(view.LabelOpenWidth->text(), u"120.5"_s);
    QCOMPARE(view.LabelOpenHeight->text(), u"100.25"_s);
    QCOMPARE(texts(view.LabelWidth), (QStringList{u"119.5"_s, u"58.15"_s, u"53.55"_s, u"57.1"_s}));
    QCOMPARE(texts(view.LabelHeight), (QStringList{u"98.75"_s, u"92.75"_s, u"84.25"_s, u"92"_s}));
    QCOMPARE(texts(view.LabelCount), (QStringList{u"2"_s, u"4"_s, u"2"_s, u"2"_s}));
    QCOMPARE(view.LabelWidth[1]->toolTip(), u"\u2066(120.5 − 4.2) ÷ 2 = 58.15\u2069"_s);
    QCOMPARE(view.LabelHeight[1]->toolTip(), u"\u2066100.25 − 7.5 = 92.75\u2069"_s);
    QCOMPARE(texts(view.LabelKind), QStringList(4, QString()));
    QCOMPARE(texts(view.LabelColor), QStringList(4, QString()));
    QCOMPARE(host.lineCount(), 0);
    QCOMPARE(host.boxTexts().mid(0, 4), (QStringList{u"120"_s, u"50"_s, u"100"_s, u"25"_s}));
    QCOMPARE(Module1::KindCaption, u"רגיל"_s);
}

void PreCalculationTest::zeroOpening_isComputed()
{
    PanelHost host;
    host.chooseExample(2);
    preCalculate(host);
    QVERIFY(host.boxes.shown().empty());
    const output::FormView& view = output::formView();
    QCOMPARE(view.LabelOpenWidth->text(), u"0"_s);
    QCOMPARE(view.LabelOpenHeight->text(), u"0"_s);
    QCOMPARE(texts(view.LabelWidth), (QStringList{u"-1"_s, u"-2.1"_s, u"-6.7"_s, u"-3.15"_s}));
    QCOMPARE(texts(view.LabelHeight), (QStringList{u"-1.5"_s, u"-7.5"_s, u"-16"_s, u"-8.25"_s}));
}

void PreCalculationTest::doorWithTwoSashes_showsFourAndStoresTwo()
{
    PanelHost host;
    host.chooseExample(2, u"d2000"_s);
    host.type(u"90"_s, u"00"_s, u"210"_s, u"00"_s);
    preCalculate(host);
    const output::FormView& view = output::formView();
    QCOMPARE(texts(view.LabelWidth), (QStringList{u"89"_s, u"38.9"_s, u"0"_s, u"0"_s}));
    QCOMPARE(texts(view.LabelHeight), (QStringList{u"208.5"_s, u"198.5"_s, u"0"_s, u"0"_s}));
    QCOMPARE(texts(view.LabelCount), (QStringList{u"2"_s, u"4"_s, u"2"_s, u"2"_s}));
    host.add();
    QCOMPARE(host.stored(u"Kanaf_Count"_s), QVariant(2));
}

void PreCalculationTest::monoblock_showsCutsOfTheReducedOpening()
{
    PanelHost host;
    host.chooseExample(2);
    host.takeMonoblock();
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    preCalculate(host);
    const output::FormView& view = output::formView();
    QCOMPARE(view.LabelOpenWidth->text(), u"120.5"_s);
    QCOMPARE(texts(view.LabelWidth), (QStringList{u"117"_s, u"56.9"_s, u"52.3"_s, u"55.85"_s}));
    QCOMPARE(texts(view.LabelHeight), (QStringList{u"80.75"_s, u"74.75"_s, u"66.25"_s, u"74"_s}));
    QCOMPARE(Module1::KindCaption, u"מונובלוק : 20 מכסה 15"_s);
}

// By hand, for 2 sashes: 2 * 2 = 4.
void PreCalculationTest::toolTips_explainOpeningsAndCounts()
{
    PanelHost host;
    host.chooseExample(2);
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    preCalculate(host);
    const output::FormView& view = output::formView();
    QCOMPARE(view.LabelOpenWidth->toolTip(),
             u"רוחב הפתח כפי שהוקלד, ביחידת המידה של הורדות הסדרה."_s);
    QCOMPARE(view.LabelOpenHeight->toolTip(),
             u"גובה הפתח כפי שהוקלד, ביחידת המידה של הורדות הסדרה."_s);
    QCOMPARE(view.LabelCount[0]->toolTip(), u"\u20662\u2069 (מספר קבוע, בכל הסדרות)"_s);
    QCOMPARE(view.LabelCount[1]->toolTip(), u"\u20662 × 2 = 4\u2069 (מספר הכנפיים בסדרה כפול 2)"_s);
    QCOMPARE(view.LabelCount[3]->toolTip(), u"\u20662\u2069 (מספר הכנפיים בסדרה)"_s);
}

// By hand: the monoblock takes off 2.5 and 18, the series 1 and 1.5 from the frame;
// 90 - 2.5 - 1 = 86.5 and 210 - 18 - 1.5 = 190.5. The door has 2 sashes of a frame of 4.
void PreCalculationTest::monoblockDoor_explainsItsFrameFromTheMonoblock()
{
    PanelHost host;
    host.chooseExample(2, u"d2000"_s);
    host.takeMonoblock();
    host.type(u"90"_s, u"00"_s, u"210"_s, u"00"_s);
    preCalculate(host);
    const output::FormView& view = output::formView();
    QCOMPARE(view.LabelWidth[0]->toolTip(), u"\u2066(90 − 2.5) − 1 = 86.5\u2069"_s);
    QCOMPARE(view.LabelHeight[0]->toolTip(), u"\u2066(210 − 18) − 1.5 = 190.5\u2069"_s);
    QCOMPARE(view.LabelOpenWidth->toolTip().section(u'\n', 1),
             u"הרוחב שנשאר לכנף הדלת: \u206690 − 2 × 4 = 82\u2069"_s);
    QVERIFY(view.LabelCount[1]->toolTip().endsWith(u"בשורה של דלת תישמר הכמות \u20662\u2069."_s));
}

void PreCalculationTest::kindsAndColours_areShown()
{
    PanelHost host;
    host.chooseExample(1);
    for (std::size_t part = 0; part < 4; ++part) {
        host.panel().DBComboKind[part]->setEditText(u"סוג %1"_s.arg(part));
        host.panel().DBComboColor[part]->setEditText(u"צבע %1"_s.arg(part));
    }
    preCalculate(host);
    QCOMPARE(texts(output::formView().LabelKind),
             (QStringList{u"סוג 0"_s, u"סוג 1"_s, u"סוג 2"_s, u"סוג 3"_s}));
    QCOMPARE(texts(output::formView().LabelColor),
             (QStringList{u"צבע 0"_s, u"צבע 1"_s, u"צבע 2"_s, u"צבע 3"_s}));
}

void PreCalculationTest::noKindsAndColours_showsEmptyTexts()
{
    PanelHost host;
    host.chooseExample(1);
    preCalculate(host);
    QCOMPARE(texts(output::formView().LabelKind), QStringList(4, QString()));
    QCOMPARE(texts(output::formView().LabelColor), QStringList(4, QString()));
    QVERIFY(host.boxes.shown().empty());
}

void PreCalculationTest::missingSeries_isRefusedBeforeTheBoxesAreRead()
{
    PanelHost host;
    host.type(u"x"_s, u"00"_s, u"0"_s, u"00"_s);
    host.boxes.answer(runtime::vbOK);
    preCalculate(host);
    QCOMPARE(host.boxes.shown().size(), std::size_t{1});
    QCOMPARE(host.boxes.shown()[0].text, u"לא בחרת שום סדרה, לחץ על 'בחר סדרה' "_s);
    QCOMPARE(host.boxes.shown()[0].title, u"בחירת סדרה"_s);
    QCOMPARE(host.boxes.shown()[0].flags, 1572880);
    QVERIFY(!output::isFormViewLoaded());
    QVERIFY(!host.end.exitStatus());
}

void PreCalculationTest::secondPreCalculation_usesTheSameView()
{
    PanelHost host;
    host.chooseExample(1);
    preCalculate(host);
    const output::FormView* first = &output::formView();
    host.type(u"77"_s, u"00"_s, u"66"_s, u"00"_s);
    preCalculate(host);
    QCOMPARE(&output::formView(), first);
    QCOMPARE(first->LabelOpenWidth->text(), u"77"_s);
    QVERIFY(first->isVisible());
}

void PreCalculationTest::openView_leavesTheOrderFormUsable()
{
    PanelHost host;
    host.chooseExample(1);
    host.type(u"77"_s, u"00"_s, u"66"_s, u"00"_s);
    preCalculate(host);
    QVERIFY(output::formView().isVisible());
    host.add();
    QCOMPARE(host.lineCount(), 1);
}

void PreCalculationTest::addedLine_hasTheShownCuts()
{
    PanelHost host;
    host.chooseExample(2);
    host.takeMonoblock();
    host.type(u"133"_s, u"07"_s, u"99"_s, u"99"_s);
    preCalculate(host);
    const auto shown = Module1::CutValues;
    host.add();
    const auto line = host.store.rows(u"SELECT * FROM Cuts"_s).value(0);
    for (std::size_t cell = 0; cell < 10; ++cell)
        QCOMPARE(line.value(static_cast<qsizetype>(cell) + 2).toDouble(), shown[cell]);
}

void PreCalculationTest::deletedSeries_endsTheProgramWithoutShowingTheView()
{
    PanelHost host;
    host.chooseExample(1);
    host.store.execute(u"DELETE FROM Serials"_s);
    host.boxes.answer(runtime::vbOK);
    preCalculate(host);
    host.expectEnded(runtime::NoCurrentRecord);
    QVERIFY(output::isFormViewLoaded());
    QVERIFY(!output::formView().isVisible());
    QCOMPARE(output::formView().LabelName->text(), u"בלגי 7000"_s);
    QCOMPARE(output::formView().LabelOpenWidth->text(), u"0"_s);
}

void PreCalculationTest::badInputs_endTheProgram()
{
    PanelHost host;
    host.chooseExample(1);
    host.type(u"x"_s, u"00"_s, u"0"_s, u"00"_s);
    host.boxes.answer(runtime::vbOK);
    preCalculate(host);
    host.expectEnded(runtime::TypeMismatch);
    QVERIFY(!output::isFormViewLoaded());
    host.boxes.clear();
    host.type(u"1"_s, u"00"_s, u"1"_s, u"00"_s);
    host.store.execute(u"UPDATE Serials SET Kanaf_Num = 0"_s);
    host.boxes.answer(runtime::vbOK);
    preCalculate(host);
    host.expectEnded(runtime::DivisionByZero);
    QVERIFY(!output::isFormViewLoaded());
}

void PreCalculationTest::decimalCommaLocale_showsCommas()
{
    PanelHost host;
    host.chooseExample(2);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    host.type(u"120"_s, u"50"_s, u"100"_s, u"25"_s);
    preCalculate(host);
    QLocale::setDefault(QLocale::c());
    QCOMPARE(output::formView().LabelWidth[1]->text(), u"58,15"_s);
    QCOMPARE(output::formView().LabelDate->text(), u"01/03/2026"_s);
}

ZOMREL_QTEST_MAIN(PreCalculationTest)
#include "pre_calculation_test.moc"
