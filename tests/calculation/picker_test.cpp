#include "picker_host.h"

#include "base/input_boxes.h"
#include "base/module1.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_grid.h"
#include "platform/runtime/message_box.h"
#include "platform/runtime/run_time_error.h"
#include "support/wheel.h"
#include "support/widgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTest>

using namespace Qt::StringLiterals;
using calculation::FormSelectSerial;
using testsupport::child;

namespace {

QStringList texts(const FormSelectSerial& picker)
{
    QStringList result;
    for (const base::MeasureBox* box : picker.TextNum)
        result.append(box->text());
    return result;
}

} // namespace

class PickerTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void window_isAModelessToolWindow();
    void captions_haveTheirTexts();
    void grid_listsTheSeries();
    void monoblockControls_areDisabledAtFirst();
    void tabKey_visitsTheControlsInOrder();
    void checkingMonoblock_enablesAndFillsTheBoxes();
    void uncheckingMonoblock_disablesAndKeepsTheTexts();
    void monoblockType_fillsTheBoxes_data();
    void monoblockType_fillsTheBoxes();
    void emptyBoxLeft_isFilledButNotPadded();
    void enterInABox_choosesNoSeries();
    void heldEnter_choosesNoSeries();
    void wheelOverAListWithoutTheFocus_changesNothing();
};

void PickerTest::cleanup()
{
    closePickers();
}

void PickerTest::window_isAModelessToolWindow()
{
    PanelHost host;
    const FormSelectSerial& picker = open(host);
    QCOMPARE(picker.objectName(), u"FormSelectSerial"_s);
    QCOMPARE(picker.windowTitle(), u" סדרות"_s);
    QCOMPARE(picker.layoutDirection(), Qt::RightToLeft);
    QVERIFY(!picker.isModal());
    QCOMPARE(picker.minimumSize(), picker.maximumSize());
    QVERIFY(!picker.windowFlags().testAnyFlags(Qt::WindowMinMaxButtonsHint));
    QCOMPARE(picker.windowType(), Qt::Tool);
    const QRect screen = picker.screen()->availableGeometry();
    QVERIFY((picker.geometry().center() - screen.center()).manhattanLength() <= 60);
    QVERIFY(child<QWidget>(picker, u"DBGrid1"_s)->hasFocus());
}

void PickerTest::captions_haveTheirTexts()
{
    PanelHost host;
    const FormSelectSerial& picker = open(host);
    QCOMPARE(picker.DBGrid1->caption(), u"סדרות"_s);
    QCOMPARE(picker.CmdPic->text(), u"בחר"_s);
    QCOMPARE(picker.CmdClose->text(), u"סגור"_s);
    QCOMPARE(picker.CheckKind->text(), u"האם החלון הוא מסוג \" מונובלוק \" ?"_s);
    QCOMPARE(picker.FrameMonoblock->title(), u"נתוני  מונובלוק"_s);
    QCOMPARE(child<QLabel>(picker, u"Label6"_s)->text(), u"סוג :"_s);
    QCOMPARE(child<QLabel>(picker, u"Label2"_s)->text(), u" הורדה מהרוחב :"_s);
    QCOMPARE(child<QLabel>(picker, u"Label3"_s)->text(), u" הורדה מהגובה  :"_s);
    QCOMPARE(child<QLabel>(picker, u"Label4"_s)->text(), u"עובי U :"_s);
    QCOMPARE(child<QLabel>(picker, u"Label5"_s)->text(), u"עובי שלב  :"_s);
    for (const int index : {0, 1, 2, 3, 4, 9})
        QCOMPARE(child<QLabel>(picker, u"Label1_%1"_s.arg(index))->text(), u"."_s);
}

void PickerTest::grid_listsTheSeries()
{
    PanelHost host;
    host.store.addSeries(u"בלגי"_s, someDeductions, 2, 3);
    host.store.addSeries(u"קליל"_s, someDeductions, 4, 1);
    const FormSelectSerial& picker = open(host);
    const QAbstractItemModel* model = picker.DBGrid1->model();
    QTRY_COMPARE(model->rowCount(), 2);
    const QStringList captions{u"מס. כנף"_s,  u"מס. נתיב"_s, u"שם סדרה"_s,   u"Mashkof_H"_s,
                               u"Kanaf_W"_s,  u"Kanaf_H"_s,  u"Glass_W"_s,   u"Glass_H"_s,
                               u"Reshet_W"_s, u"Reshet_H"_s, u"Nativ_Num"_s, u"Kanaf_Num"_s};
    QCOMPARE(model->columnCount(), int(captions.size()));
    for (int column = 0; column < captions.size(); ++column) {
        QCOMPARE(model->headerData(column, Qt::Horizontal).toString(), captions[column]);
        QCOMPARE(picker.DBGrid1->isColumnHidden(column), column > 2);
    }
    QTRY_COMPARE(model->index(1, 2).data().toString(), u"קליל"_s);
    QCOMPARE(model->index(1, 0).data().toString(), u"4"_s);
    QCOMPARE(model->index(1, 1).data().toString(), u"1"_s);
    QCOMPARE(picker.DBGrid1->font().pointSize(), 11);
    const int narrow = picker.DBGrid1->columnWidth(0);
    QVERIFY(qAbs(narrow - picker.DBGrid1->columnWidth(1)) <= 1);
    QVERIFY(qAbs(picker.DBGrid1->columnWidth(2) - narrow * 5292 / 1773) <= 4);
    QVERIFY(!(model->flags(model->index(0, 2)) & Qt::ItemIsEditable));
}

void PickerTest::monoblockControls_areDisabledAtFirst()
{
    PanelHost host;
    const FormSelectSerial& picker = open(host);
    QCOMPARE(texts(picker), (QStringList{u"0"_s, u"00"_s, u"0"_s, u"00"_s, u"4"_s, u"50"_s}));
    QVERIFY(!picker.CheckKind->isChecked());
    QCOMPARE(picker.ComboMonoBlock->currentIndex(), -1);
    QCOMPARE(picker.Combo_U_Thick->currentIndex(), -1);
    QVERIFY(!picker.ComboMonoBlock->isEnabled());
    QVERIFY(!picker.Combo_U_Thick->isEnabled());
    for (std::size_t i = 0; i < picker.TextNum.size(); ++i) {
        QVERIFY(!picker.TextNum[i]->isEnabled());
        QCOMPARE(picker.TextNum[i]->objectName(), u"TextNum_%1"_s.arg(i));
        QCOMPARE(picker.TextNum[i]->maxLength(), i % 2 == 0 ? 3 : 2);
        QCOMPARE(picker.TextNum[i]->parentWidget()->objectName(), u"Picture1_%1"_s.arg(i / 2));
    }
    for (const int index : {2, 4, 9})
        QVERIFY(!child<QLabel>(picker, u"Label1_%1"_s.arg(index))->isEnabled());
    for (const int index : {0, 1, 3})
        QVERIFY(child<QLabel>(picker, u"Label1_%1"_s.arg(index))->isEnabled());
    QStringList entries;
    for (int i = 0; i < picker.ComboMonoBlock->count(); ++i)
        entries.append(picker.ComboMonoBlock->itemText(i));
    QCOMPARE(entries,
             (QStringList{u"מונו בלוק : 10"_s, u"מונו בלוק : 30"_s, u"מונובלוק : 20 מכסה 15"_s}));
    QCOMPARE(picker.Combo_U_Thick->itemText(0), u"6.5"_s);
    QCOMPARE(picker.Combo_U_Thick->itemText(1), u"5.3"_s);
    QVERIFY(!picker.ComboMonoBlock->isEditable());
}

void PickerTest::tabKey_visitsTheControlsInOrder()
{
    PanelHost host;
    const FormSelectSerial& picker = open(host);
    picker.CheckKind->setChecked(true);
    QCOMPARE(testsupport::tabOrderFrom(picker.DBGrid1),
             (QStringList{u"DBGrid1"_s, u"CmdClose"_s, u"CmdPic"_s, u"TextNum_3"_s, u"TextNum_2"_s,
                          u"TextNum_1"_s, u"TextNum_0"_s, u"CheckKind"_s, u"ComboMonoBlock"_s,
                          u"TextNum_4"_s, u"TextNum_5"_s, u"Combo_U_Thick"_s}));
    // Tab leaves the grid immediately and does not move between its cells.
    picker.DBGrid1->setFocus();
    QTest::keyClick(picker.DBGrid1, Qt::Key_Tab);
    QVERIFY(picker.CmdClose->hasFocus());
}

void PickerTest::checkingMonoblock_enablesAndFillsTheBoxes()
{
    PanelHost host;
    const FormSelectSerial& picker = open(host);
    QTest::mouseClick(picker.CheckKind, Qt::LeftButton, {},
                      QPoint(picker.CheckKind->width() - 8, picker.CheckKind->height() / 2));
    QVERIFY(picker.CheckKind->isChecked());
    QVERIFY(picker.ComboMonoBlock->isEnabled());
    QVERIFY(picker.Combo_U_Thick->isEnabled());
    for (const base::MeasureBox* box : picker.TextNum)
        QVERIFY(box->isEnabled());
    for (const int index : {2, 4, 9})
        QVERIFY(child<QLabel>(picker, u"Label1_%1"_s.arg(index))->isEnabled());
    QCOMPARE(picker.ComboMonoBlock->currentIndex(), 0);
    QCOMPARE(picker.Combo_U_Thick->currentText(), u"6.5"_s);
    QCOMPARE(texts(picker), (QStringList{u"2"_s, u"80"_s, u"18"_s, u"00"_s, u"4"_s, u"50"_s}));
    QVERIFY(picker.TextNum[0]->hasFocus());
}

void PickerTest::uncheckingMonoblock_disablesAndKeepsTheTexts()
{
    PanelHost host;
    const FormSelectSerial& picker = open(host);
    picker.CheckKind->setChecked(true);
    picker.ComboMonoBlock->setCurrentIndex(1);
    picker.Combo_U_Thick->setCurrentIndex(1);
    picker.TextNum[4]->setText(u"5"_s);
    picker.CheckKind->setChecked(false);
    QCOMPARE(texts(picker), (QStringList{u"0"_s, u"00"_s, u"28"_s, u"00"_s, u"5"_s, u"50"_s}));
    QCOMPARE(picker.ComboMonoBlock->currentIndex(), 1);
    QCOMPARE(picker.Combo_U_Thick->currentIndex(), 1);
    QVERIFY(!picker.ComboMonoBlock->isEnabled());
    QVERIFY(!picker.TextNum[5]->isEnabled());
    QVERIFY(!child<QLabel>(picker, u"Label1_9"_s)->isEnabled());
}

void PickerTest::monoblockType_fillsTheBoxes_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QStringList>("proposed");
    QTest::newRow("10") << 0 << QStringList{u"2"_s, u"80"_s, u"18"_s, u"00"_s};
    QTest::newRow("30") << 1 << QStringList{u"0"_s, u"00"_s, u"28"_s, u"00"_s};
    QTest::newRow("20") << 2 << QStringList{u"0"_s, u"00"_s, u"20"_s, u"08"_s};
}

void PickerTest::monoblockType_fillsTheBoxes()
{
    QFETCH(int, position);
    QFETCH(QStringList, proposed);
    PanelHost host;
    const FormSelectSerial& picker = open(host);
    picker.CheckKind->setChecked(true);
    picker.Combo_U_Thick->setCurrentIndex(1);
    picker.TextNum[4]->setText(u"6"_s);
    picker.ComboMonoBlock->setCurrentIndex(position == 0 ? 1 : 0);
    picker.ComboMonoBlock->setCurrentIndex(position);
    QCOMPARE(texts(picker), proposed + QStringList({u"6"_s, u"50"_s}));
    QCOMPARE(picker.Combo_U_Thick->currentIndex(), 1);
    // Choosing the current entry again restores its proposed values.
    picker.TextNum[0]->setText(u"9"_s);
    picker.ComboMonoBlock->setFocus();
    emit picker.ComboMonoBlock->activated(position);
    QCOMPARE(texts(picker).front(), proposed.front());
}

void PickerTest::emptyBoxLeft_isFilledButNotPadded()
{
    PanelHost host;
    const FormSelectSerial& picker = open(host);
    picker.CheckKind->setChecked(true);
    picker.TextNum[1]->setText(u""_s);
    picker.TextNum[0]->setText(u""_s);
    picker.TextNum[1]->setFocus();
    picker.TextNum[0]->setFocus();
    QCOMPARE(picker.TextNum[1]->text(), u"00"_s);
    picker.TextNum[3]->setFocus();
    QCOMPARE(picker.TextNum[0]->text(), u"0"_s);
    picker.TextNum[3]->setText(u"5"_s);
    picker.TextNum[2]->setFocus();
    QCOMPARE(picker.TextNum[3]->text(), u"5"_s);
}

void PickerTest::enterInABox_choosesNoSeries()
{
    PanelHost host;
    host.store.addSeries(u"בלגי"_s, someDeductions, 2, 3);
    const FormSelectSerial& picker = open(host);
    picker.CheckKind->setChecked(true);
    picker.TextNum[3]->setFocus();
    QTest::keyClick(picker.TextNum[3], Qt::Key_Return);
    QTRY_VERIFY(picker.TextNum[2]->hasFocus());
    QTRY_COMPARE(picker.TextNum[2]->selectedText(), u"18"_s);
    picker.CheckKind->setFocus();
    QTest::keyClick(picker.CheckKind, Qt::Key_Return);
    picker.ComboMonoBlock->setFocus();
    QTest::keyClick(picker.ComboMonoBlock, Qt::Key_Return);
    QVERIFY(picker.isVisible());
    QCOMPARE(Module1::SelectedSerialNum, std::int16_t(0));
}

/// Enter on the button opens the picker. The key repeats while it is held down, and the grid has
/// the focus then.
void PickerTest::heldEnter_choosesNoSeries()
{
    PanelHost host;
    host.store.addSeries(u"קליל"_s, someDeductions, 2, 2);
    const QPointer<FormSelectSerial> picker = &open(host);
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QApplication::sendEvent(picker->DBGrid1, &repeated);
    QVERIFY(picker->isVisible());
    QTest::keyClick(picker->DBGrid1, Qt::Key_Return);
    QTRY_VERIFY(picker.isNull());
}

void PickerTest::wheelOverAListWithoutTheFocus_changesNothing()
{
    PanelHost host;
    FormSelectSerial& picker = open(host);
    picker.CheckKind->setChecked(true);
    const QStringList before = texts(picker);
    for (QComboBox* list : {picker.ComboMonoBlock, picker.Combo_U_Thick}) {
        picker.TextNum[0]->setFocus();
        testsupport::turnWheel(*list);
        QCOMPARE(list->currentIndex(), 0);
    }
    QCOMPARE(texts(picker), before);
}

ZOMREL_QTEST_MAIN(PickerTest)
#include "picker_test.moc"
