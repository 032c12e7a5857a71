#include "picker_host.h"

#include "platform/controls/data_control.h"
#include "platform/controls/db_grid.h"
#include "platform/controls/form.h"
#include "platform/runtime/message_box.h"
#include "platform/runtime/run_time_error.h"
#include "shell/base/input_boxes.h"
#include "shell/base/module1.h"
#include "support/widgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using calculation::FormSelectSerial;
using testsupport::child;

class ChooseSeriesTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void ordinaryWindow_setsPanelAndSharedState();
    void monoblock_setsItsSharedState();
    void doorSeries_showsTheDoorFrame();
    void otherSigns_areNoDoors_data();
    void otherSigns_areNoDoors();
    void doorWithMonoblock_setsBoth();
    void uncheckedMonoblock_isIgnored();
    void singleDigitHundredths_areHundredths();
    void secondUThickness_setsItsDeduction();
    void doubleClickOrEnter_choosesAndCloses_data();
    void doubleClickOrEnter_choosesAndCloses();
    void currentRow_isChosen();

    void closing_choosesNothing_data();
    void closing_choosesNothing();
    void reopenedPicker_startsAfresh();
    void secondOpening_activatesTheSamePicker();
    void choosingAfterTheOrderFormIsGone_loadsItAgain();
    void choosing_activatesTheOrderForm();
    void badSeriesField_endsTheProgram_data();
    void badSeriesField_endsTheProgram();
    void emptyTable_isNoCurrentRecord();
    void deletedSeries_isNotChosen();
    void deletedCurrentSeries_isChosenWithItsLastValues();
    void boxWithoutANumber_isTypeMismatch();
    void hiddenOrderForm_isInvalidProcedureCall();
};

void ChooseSeriesTest::cleanup()
{
    closePickers();
}

void ChooseSeriesTest::ordinaryWindow_setsPanelAndSharedState()
{
    PanelHost host;
    const int autoNum = host.store.addSeries(u"בלגי"_s, someDeductions, 2, 3);
    Module1::MonoWidthDeduct = 7.0;
    Module1::Shalav_Thick = 3.0;
    Module1::U_Thick = u"5.3"_s;
    Module1::IsMonoblock = true;
    Module1::IsDoorFrame = true;
    host.panel().FrameDoorMashkof->show();
    host.panel().LabelKind->setText(u"מונו בלוק : 30"_s);
    QPointer<FormSelectSerial> picker = &open(host);
    choose(*picker);
    QCOMPARE(host.boxes.unexpected(), QStringList());
    QCOMPARE(host.panel().LabelSerial->text(), u"בלגי"_s);
    QCOMPARE(host.panel().LabelNativ->text(), u"3"_s);
    QCOMPARE(host.panel().LabelKanaf->text(), u"2"_s);
    QCOMPARE(int(Module1::SelectedSerialNum), autoNum);
    QVERIFY(!host.panel().FrameDoorMashkof->isVisible());
    QVERIFY(!Module1::IsDoorFrame);
    QVERIFY(!Module1::IsMonoblock);
    QCOMPARE(host.panel().LabelKind->text(), u"רגיל"_s);
    // The values of the previous monoblock stay unchanged.
    QCOMPARE(Module1::MonoWidthDeduct, QVariant(7.0));
    QCOMPARE(Module1::Shalav_Thick, QVariant(3.0));
    QCOMPARE(Module1::U_Thick, QVariant(u"5.3"_s));
    QTRY_VERIFY(picker.isNull());
    QTRY_VERIFY(host.panel().TextNum[0]->hasFocus());
    QCOMPARE(host.panel().TextNum[0]->selectedText(), u"0"_s);
}

void ChooseSeriesTest::monoblock_setsItsSharedState()
{
    PanelHost host;
    host.store.addSeries(u"בלגי"_s, someDeductions, 2, 3);
    FormSelectSerial& picker = open(host);
    picker.CheckKind->setChecked(true);
    picker.ComboMonoBlock->setCurrentIndex(2);
    picker.TextNum[1]->setText(u"25"_s);
    choose(picker);
    QVERIFY(Module1::IsMonoblock);
    QCOMPARE(Module1::MonoWidthDeduct, QVariant(0.25));
    QCOMPARE(Module1::MonoHeightDeduct, 8 / 100.0 + 20);
    QCOMPARE(Module1::U_Thick, QVariant(u"6.5"_s));
    QCOMPARE(Module1::ShalavWidthDeduct, QVariant(12.7));
    QCOMPARE(Module1::Shalav_Thick, QVariant(4.5));
    QCOMPARE(host.panel().LabelKind->text(), u"מונובלוק : 20 מכסה 15"_s);
}

void ChooseSeriesTest::doorSeries_showsTheDoorFrame()
{
    PanelHost host;
    host.store.addSeries(u"דלת"_s, someDeductions, 1, 1, u"d2000"_s);
    choose(open(host));
    QVERIFY(Module1::IsDoorFrame);
    QVERIFY(!Module1::IsMonoblock);
    QVERIFY(host.panel().FrameDoorMashkof->isVisible());
    QTRY_VERIFY(host.panel().TextNum[4]->hasFocus());
    QCOMPARE(host.panel().TextNum[4]->selectedText(), u"4"_s);
    QCOMPARE(host.panel().LabelKind->text(), u"רגיל"_s);
}

void ChooseSeriesTest::otherSigns_areNoDoors_data()
{
    QTest::addColumn<QVariant>("sign");
    QTest::newRow("null") << QVariant();
    QTest::newRow("empty") << QVariant(u""_s);
    QTest::newRow("upper case") << QVariant(u"D2000"_s);
    QTest::newRow("blank behind") << QVariant(u"d2000 "_s);
    QTest::newRow("blank in front") << QVariant(u" d2000"_s);
    QTest::newRow("longer") << QVariant(u"d20000"_s);
}

void ChooseSeriesTest::otherSigns_areNoDoors()
{
    QFETCH(QVariant, sign);
    PanelHost host;
    host.store.addSeries(u"דלת"_s, someDeductions, 1, 1, sign);
    Module1::IsDoorFrame = true;
    choose(open(host));
    QVERIFY(!host.end.exitStatus());
    QVERIFY(!Module1::IsDoorFrame);
    QVERIFY(!host.panel().FrameDoorMashkof->isVisible());
}

void ChooseSeriesTest::doorWithMonoblock_setsBoth()
{
    PanelHost host;
    host.store.addSeries(u"דלת"_s, someDeductions, 1, 1, u"d2000"_s);
    FormSelectSerial& picker = open(host);
    picker.CheckKind->setChecked(true);
    choose(picker);
    QVERIFY(Module1::IsDoorFrame);
    QVERIFY(Module1::IsMonoblock);
    QCOMPARE(host.panel().LabelKind->text(), u"מונו בלוק : 10"_s);
    QTRY_VERIFY(host.panel().TextNum[4]->hasFocus());
}

void ChooseSeriesTest::uncheckedMonoblock_isIgnored()
{
    PanelHost host;
    host.store.addSeries(u"בלגי"_s, someDeductions, 2, 3);
    FormSelectSerial& picker = open(host);
    picker.CheckKind->setChecked(true);
    picker.TextNum[0]->setText(u"x"_s);
    picker.CheckKind->setChecked(false);
    choose(picker);
    QVERIFY(!host.end.exitStatus());
    QVERIFY(!Module1::IsMonoblock);
    QCOMPARE(host.panel().LabelKind->text(), u"רגיל"_s);
    QCOMPARE(Module1::MonoWidthDeduct, QVariant(0.0));
    QCOMPARE(Module1::U_Thick, QVariant(0.0));
}

void ChooseSeriesTest::singleDigitHundredths_areHundredths()
{
    PanelHost host;
    host.store.addSeries(u"בלגי"_s, someDeductions, 2, 3);
    FormSelectSerial& picker = open(host);
    picker.CheckKind->setChecked(true);
    picker.TextNum[1]->setText(u"8"_s);
    picker.TextNum[5]->setText(u"5"_s);
    choose(picker);
    QCOMPARE(Module1::MonoWidthDeduct, QVariant(8 / 100.0 + 2));
    QCOMPARE(Module1::Shalav_Thick, QVariant(5 / 100.0 + 4));
}

void ChooseSeriesTest::secondUThickness_setsItsDeduction()
{
    PanelHost host;
    host.store.addSeries(u"בלגי"_s, someDeductions, 2, 3);
    FormSelectSerial& picker = open(host);
    picker.CheckKind->setChecked(true);
    picker.Combo_U_Thick->setCurrentIndex(1);
    choose(picker);
    QCOMPARE(Module1::U_Thick, QVariant(u"5.3"_s));
    QCOMPARE(Module1::ShalavWidthDeduct, QVariant(10.3));
}

void ChooseSeriesTest::doubleClickOrEnter_choosesAndCloses_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("double-click") << 0;
    QTest::newRow("Enter in the grid") << 1;
    QTest::newRow("Enter of the keypad in the grid") << 2;
}

void ChooseSeriesTest::doubleClickOrEnter_choosesAndCloses()
{
    QFETCH(int, way);
    PanelHost host;
    const int autoNum = host.store.addSeries(u"בלגי"_s, someDeductions, 2, 3);
    QPointer<FormSelectSerial> picker = &open(host);
    controls::DBGrid* grid = picker->DBGrid1;
    if (way == 0) {
        const QPoint cell = grid->visualRect(grid->model()->index(0, 2)).center();
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell);
        QCOMPARE(Module1::SelectedSerialNum, std::int16_t(0));
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell);
    } else {
        QTest::keyClick(grid, way == 1 ? Qt::Key_Return : Qt::Key_Enter);
    }
    QCOMPARE(int(Module1::SelectedSerialNum), autoNum);
    QTRY_VERIFY(picker.isNull());
    QVERIFY(!host.end.exitStatus());
}

void ChooseSeriesTest::currentRow_isChosen()
{
    PanelHost host;
    host.store.addSeries(u"ראשונה"_s, someDeductions, 2, 3);
    const int second = host.store.addSeries(u"שנייה"_s, someDeductions, 5, 4);
    host.store.addSeries(u"שלישית"_s, someDeductions, 6, 1);
    FormSelectSerial& picker = open(host);
    QTest::keyClick(picker.DBGrid1, Qt::Key_Down);
    choose(picker);
    QCOMPARE(int(Module1::SelectedSerialNum), second);
    QCOMPARE(host.panel().LabelSerial->text(), u"שנייה"_s);
    QCOMPARE(host.panel().LabelNativ->text(), u"4"_s);
    QCOMPARE(host.panel().LabelKanaf->text(), u"5"_s);
}

void ChooseSeriesTest::closing_choosesNothing_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("CmdClose") << 0;
    QTest::newRow("close box") << 1;
    QTest::newRow("Escape") << 2;
}

void ChooseSeriesTest::closing_choosesNothing()
{
    QFETCH(int, way);
    PanelHost host;
    const int chosen = host.chooseExample(2);
    host.takeMonoblock();
    host.store.addSeries(u"דלת"_s, someDeductions, 1, 1, u"d2000"_s);
    QPointer<FormSelectSerial> picker = &open(host);
    QTest::keyClick(picker->DBGrid1, Qt::Key_Down);
    picker->CheckKind->setChecked(true);
    if (way == 0)
        QTest::mouseClick(picker->CmdClose, Qt::LeftButton);
    else if (way == 1)
        picker->close();
    else
        QTest::keyClick(picker, Qt::Key_Escape);
    QTRY_VERIFY(picker.isNull());
    QCOMPARE(int(Module1::SelectedSerialNum), chosen);
    QVERIFY(Module1::IsMonoblock);
    QVERIFY(!Module1::IsDoorFrame);
    QCOMPARE(Module1::MonoWidthDeduct, QVariant(2.5));
    QCOMPARE(host.panel().LabelSerial->text(), u"בלגי 7000"_s);
    QVERIFY(host.window().isVisible());
}

void ChooseSeriesTest::reopenedPicker_startsAfresh()
{
    PanelHost host;
    host.store.addSeries(u"ראשונה"_s, someDeductions, 2, 3);
    host.store.addSeries(u"שנייה"_s, someDeductions, 5, 4);
    FormSelectSerial& first = open(host);
    QTest::keyClick(first.DBGrid1, Qt::Key_Down);
    first.CheckKind->setChecked(true);
    first.TextNum[0]->setText(u"9"_s);
    choose(first);
    QVERIFY(Module1::IsMonoblock);
    FormSelectSerial& second = open(host);
    QVERIFY(!second.CheckKind->isChecked());
    QCOMPARE(second.ComboMonoBlock->currentIndex(), -1);
    QCOMPARE(second.TextNum[0]->text(), u"0"_s);
    choose(second);
    QVERIFY(!Module1::IsMonoblock);
    QCOMPARE(host.panel().LabelSerial->text(), u"ראשונה"_s);
}

void ChooseSeriesTest::secondOpening_activatesTheSamePicker()
{
    PanelHost host;
    host.store.addSeries(u"בלגי"_s, someDeductions, 2, 3);
    FormSelectSerial& first = open(host);
    first.CheckKind->setChecked(true);
    host.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&host.window()));
    FormSelectSerial& second = open(host);
    QCOMPARE(&first, &second);
    QVERIFY(second.CheckKind->isChecked());
}

void ChooseSeriesTest::choosingAfterTheOrderFormIsGone_loadsItAgain()
{
    PanelHost host;
    const int autoNum = host.store.addSeries(u"בלגי"_s, someDeductions, 2, 3);
    QPointer<FormSelectSerial> picker = &open(host);
    host.leaveOrderForm();
    // The first access to the order form loads a new one, which has no chosen series.
    std::unique_ptr<calculation::OpeningPanel> reloaded;
    calculation::setOpeningPanelProvider([&]() -> calculation::OpeningPanel& {
        if (reloaded == nullptr) {
            reloaded = std::make_unique<calculation::OpeningPanel>();
            Module1::SelectedSerialNum = 0;
            reloaded->show();
        }
        return *reloaded;
    });
    choose(*picker);
    QVERIFY(!host.end.exitStatus());
    QCOMPARE(reloaded->LabelSerial->text(), u"בלגי"_s);
    QCOMPARE(int(Module1::SelectedSerialNum), autoNum);
    QTRY_VERIFY(reloaded->TextNum[0]->hasFocus());
    QTRY_VERIFY(picker.isNull());
}

void ChooseSeriesTest::choosing_activatesTheOrderForm()
{
    PanelHost host;
    host.store.addSeries(u"בלגי"_s, someDeductions, 2, 3);
    QMdiArea frame;
    controls::setFrame(&frame);
    const auto withoutFrame = qScopeGuard([] { controls::setFrame(nullptr); });
    auto* panel = new calculation::OpeningPanel;
    QMdiSubWindow* orderForm = frame.addSubWindow(panel);
    QMdiSubWindow* another = frame.addSubWindow(new QLineEdit);
    calculation::setOpeningPanelProvider([=]() -> calculation::OpeningPanel& { return *panel; });
    frame.show();
    frame.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&frame));
    frame.setActiveSubWindow(another);
    QPointer<FormSelectSerial> picker = &open(host);
    QCOMPARE(picker->parentWidget(), &frame);
    choose(*picker);
    QTRY_VERIFY(panel->TextNum[0]->hasFocus());
    QCOMPARE(frame.activeSubWindow(), orderForm);
    QTRY_VERIFY(picker.isNull());
}

void ChooseSeriesTest::badSeriesField_endsTheProgram_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<int>("error");
    const auto row = [](const char* name, const QString& sql, int error) {
        QTest::newRow(name) << sql << error;
    };
    row("Name", u"UPDATE Serials SET Name = NULL"_s, runtime::InvalidUseOfNull);
    row("Nativ_Num", u"UPDATE Serials SET Nativ_Num = NULL"_s, runtime::InvalidUseOfNull);
    row("Kanaf_Num", u"UPDATE Serials SET Kanaf_Num = NULL"_s, runtime::InvalidUseOfNull);
    row("AutoNum", u"UPDATE Serials SET AutoNum = 32768"_s, runtime::Overflow);
}

void ChooseSeriesTest::badSeriesField_endsTheProgram()
{
    QFETCH(QString, sql);
    QFETCH(int, error);
    PanelHost host;
    host.store.addSeries(u"בלגי"_s, someDeductions, 2, 3);
    host.store.execute(sql);
    FormSelectSerial& picker = open(host);
    host.boxes.answer(runtime::vbOK);
    choose(picker);
    host.expectEnded(error);
    QCOMPARE(Module1::SelectedSerialNum, std::int16_t(0));
}

void ChooseSeriesTest::emptyTable_isNoCurrentRecord()
{
    PanelHost host;
    FormSelectSerial& picker = open(host);
    host.boxes.answer(runtime::vbOK);
    choose(picker);
    host.expectEnded(runtime::NoCurrentRecord);
}

/// The deleted series cannot become the grid's current row, and double-clicking it chooses no other
/// series.
void ChooseSeriesTest::deletedSeries_isNotChosen()
{
    PanelHost host;
    const int first = host.store.addSeries(u"ראשונה"_s, someDeductions, 2, 3);
    const int second = host.store.addSeries(u"שנייה"_s, someDeductions, 5, 4);
    FormSelectSerial& picker = open(host);
    host.store.execute(u"DELETE FROM Serials WHERE AutoNum = ?"_s, {second});
    controls::DBGrid* grid = picker.DBGrid1;
    const QPoint cell = grid->visualRect(grid->model()->index(1, 2)).center();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell);
    QVERIFY(!host.end.exitStatus());
    QCOMPARE(Module1::SelectedSerialNum, std::int16_t(0));
    QVERIFY(picker.isVisible());
    QCOMPARE(grid->currentIndex().row(), 0);
    choose(picker);
    QCOMPARE(int(Module1::SelectedSerialNum), first);
}

/// The current row keeps the values of the last visit, so it can be chosen; the next computation
/// does not find the series.
void ChooseSeriesTest::deletedCurrentSeries_isChosenWithItsLastValues()
{
    PanelHost host;
    const int only = host.store.addSeries(u"יחידה"_s, someDeductions, 2, 3);
    FormSelectSerial& picker = open(host);
    host.store.execute(u"DELETE FROM Serials"_s);
    choose(picker);
    QVERIFY(!host.end.exitStatus());
    QCOMPARE(int(Module1::SelectedSerialNum), only);
    QCOMPARE(host.panel().LabelSerial->text(), u"יחידה"_s);
    host.type(u"100"_s, u"00"_s, u"100"_s, u"00"_s);
    host.addFailing(runtime::NoCurrentRecord);
    QCOMPARE(host.lineCount(), 0);
}

void ChooseSeriesTest::boxWithoutANumber_isTypeMismatch()
{
    PanelHost host;
    host.store.addSeries(u"בלגי"_s, someDeductions, 2, 3);
    FormSelectSerial& picker = open(host);
    picker.CheckKind->setChecked(true);
    picker.TextNum[2]->setText(u"1x"_s);
    host.boxes.answer(runtime::vbOK);
    choose(picker);
    host.expectEnded(runtime::TypeMismatch);
    QVERIFY(Module1::IsMonoblock);
    QCOMPARE(Module1::MonoWidthDeduct, QVariant(80 / 100.0 + 2));
    QCOMPARE(Module1::MonoHeightDeduct, 0.0);
    QCOMPARE(host.panel().LabelKind->text(), u"רגיל"_s);
}

void ChooseSeriesTest::hiddenOrderForm_isInvalidProcedureCall()
{
    PanelHost host;
    const int autoNum = host.store.addSeries(u"בלגי"_s, someDeductions, 2, 3);
    FormSelectSerial& picker = open(host);
    host.panel().hide();
    host.boxes.answer(runtime::vbOK);
    choose(picker);
    host.expectEnded(runtime::InvalidProcedureCall);
    QCOMPARE(int(Module1::SelectedSerialNum), autoNum);
}

ZOMREL_QTEST_MAIN(ChooseSeriesTest)
#include "choose_series_test.moc"
