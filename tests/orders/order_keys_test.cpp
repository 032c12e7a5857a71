#include "calculation/opening_panel.h"
#include "orders/desk.h"
#include "output/form_view.h"
#include "platform/controls/db_combo.h"
#include "platform/controls/db_grid.h"
#include "platform/dao/recordset.h"
#include "platform/report/doors.h"
#include "support/wheel.h"

#include <QMenu>

#include <memory>

using namespace Qt::StringLiterals;
using testsupport::Desk;
using testsupport::focusName;

/// The keys of the order form that press buttons or move the focus.
class OrderKeysTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void enterInTheGrid_showsTheLine();
    void doubleClick_showsTheLine();
    void deleteInTheGrid_asksAndDeletesTheLine();
    void deleteAnsweredNo_deletesNothing();
    void twoQuickDeletes_askOnce();
    void homeAndEnd_goToFirstAndLastLine();
    void contextMenu_showsAndDeletesTheLine();
    void contextMenu_goesToFirstAndLastLine();
    void contextMenu_tellsTheReasonsForTheSign();
    void f6_goesFromPartToPart();
    void enterInACustomerBox_goesOnAndSelects();
    void enterInAList_goesOnAndKeepsTheText();
    void nextOpening_takesElevenKeys();
    void ctrlP_printsTheOrder();
    void heldKeys_pressNoButtonAndMoveNoFocus();
    void wheelOverAList_changesNoChoice();

private:
    /// Reads the series name from the line view as soon as it is open, and closes the view.
    void readNextView();
    controls::DBGrid& grid() const { return *desk_->on<controls::DBGrid>("DBGrid1"); }
    /// Opens the menu of the current line by the menu key. Returns nullptr if none is shown.
    QMenu* openMenu() const;
    int currentLine() const { return desk_->lines().Fields(u"NUM"_s).Value().toInt(); }

    std::unique_ptr<Desk> desk_;
    report::PaperDoor::Function formerPaper_;
    QTimer poll_;
    QString shown_; ///< The series name that readNextView has read.
};

void OrderKeysTest::init()
{
    // The machine's default printer may have another paper.
    formerPaper_ = report::paperDoor().replace([] { return report::a4Portrait; });
    desk_ = std::make_unique<Desk>();
    desk_->addOrderWithLines(1, {1, 2, 3});
    desk_->openOrder(1);
    QTRY_VERIFY(desk_->timerRests());
    desk_->window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&desk_->window));
}

void OrderKeysTest::cleanup()
{
    poll_.stop();
    report::paperDoor().replace(std::move(formerPaper_));
    QCOMPARE(desk_->boxes.unexpected(), QStringList());
    if (output::isFormViewLoaded())
        output::formView().Unload();
    desk_.reset();
}

QMenu* OrderKeysTest::openMenu() const
{
    grid().setFocus();
    const QPoint place = grid().visualRect(grid().currentIndex()).center();
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, place);
    QApplication::sendEvent(grid().viewport(), &byKey);
    auto* menu = grid().findChild<QMenu*>(u"MenuLine"_s);
    return menu != nullptr && menu->isVisible() ? menu : nullptr;
}

void OrderKeysTest::readNextView()
{
    shown_.clear();
    poll_.disconnect();
    connect(&poll_, &QTimer::timeout, this, [this] {
        auto* view = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (view == nullptr)
            return;
        poll_.stop();
        shown_ = testsupport::child<QLabel>(*view, u"LabelName"_s)->text();
        view->reject();
    });
    poll_.start(1);
}

void OrderKeysTest::enterInTheGrid_showsTheLine()
{
    grid().setFocus();
    QTest::keyClick(&grid(), Qt::Key_Up);
    readNextView();
    QTest::keyClick(&grid(), Qt::Key_Return);
    QTRY_COMPARE(shown_, u"סדרה 2"_s);
    QTRY_VERIFY(!output::isFormViewLoaded());
}

void OrderKeysTest::doubleClick_showsTheLine()
{
    readNextView();
    testsupport::doubleClickCell(grid(), 0, 2);
    QTRY_COMPARE(shown_, u"סדרה 1"_s);
    QTRY_VERIFY(!output::isFormViewLoaded());
}

void OrderKeysTest::deleteInTheGrid_asksAndDeletesTheLine()
{
    grid().setFocus();
    QTest::keyClick(&grid(), Qt::Key_Home);
    desk_->boxes.answer(runtime::vbYes);
    QTest::keyClick(&grid(), Qt::Key_Delete);
    QTRY_COMPARE(desk_->boxes.shown().size(), 1u);
    QCOMPARE(desk_->boxes.shown()[0].title, u"מחיקת הזמנה"_s);
    QTRY_COMPARE(desk_->storedLineNumbers(1), (QList<int>{2, 3}));
}

void OrderKeysTest::deleteAnsweredNo_deletesNothing()
{
    grid().setFocus();
    desk_->boxes.answer(runtime::vbNo);
    QTest::keyClick(&grid(), Qt::Key_Delete);
    QTRY_COMPARE(desk_->boxes.shown().size(), 1u);
    QCOMPARE(desk_->storedLineNumbers(1), (QList<int>{1, 2, 3}));
}

/// The second key press waits in the queue while the question about the first line is open.
void OrderKeysTest::twoQuickDeletes_askOnce()
{
    int questions = 0;
    const auto former = runtime::messageBoxDoor().replace([&questions](const auto&) {
        ++questions;
        QDialog question;
        QMetaObject::invokeMethod(&question, &QDialog::accept, Qt::QueuedConnection);
        question.exec();
        return runtime::vbYes;
    });
    grid().setFocus();
    QTest::keyClick(&grid(), Qt::Key_Home);
    for (int i = 0; i < 2; ++i)
        QCoreApplication::postEvent(
            &grid(), new QKeyEvent(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier));
    const bool isDeleted = QTest::qWaitFor([this] {
        return desk_->storedLineNumbers(1) == QList<int>{2, 3};
    });
    runtime::messageBoxDoor().replace(former);
    QVERIFY(isDeleted);
    QCOMPARE(questions, 1);
}

void OrderKeysTest::homeAndEnd_goToFirstAndLastLine()
{
    grid().setFocus();
    QTest::keyClick(&grid(), Qt::Key_Home);
    QCOMPARE(currentLine(), 1);
    QTest::keyClick(&grid(), Qt::Key_End);
    QCOMPARE(currentLine(), 3);
}

void OrderKeysTest::contextMenu_showsAndDeletesTheLine()
{
    QMenu* menu = openMenu();
    QVERIFY(menu != nullptr);
    const QList<QAction*> entries = menu->actions();
    QCOMPARE(entries.size(), 4);
    QVERIFY(entries[0]->text().startsWith(u"הצג שורה\t"_s));
    QVERIFY(entries[1]->text().startsWith(u"מחק שורה\t"_s));
    QVERIFY(entries[2]->text().startsWith(u"לשורה הראשונה\t"_s));
    QVERIFY(entries[3]->text().startsWith(u"לשורה האחרונה\t"_s));
    desk_->boxes.answer(runtime::vbYes);
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    QTRY_COMPARE(desk_->storedLineNumbers(1), (QList<int>{1, 2}));
}

void OrderKeysTest::contextMenu_goesToFirstAndLastLine()
{
    for (const auto& [entry, line] : {std::pair(2, 1), std::pair(3, 3)}) {
        QMenu* menu = openMenu();
        QVERIFY(menu != nullptr);
        menu->setActiveAction(menu->actions().at(entry));
        QTest::keyClick(menu, Qt::Key_Return);
        QTRY_COMPARE(currentLine(), line);
        QTRY_VERIFY(grid().findChild<QMenu*>(u"MenuLine"_s) == nullptr);
    }
}

void OrderKeysTest::contextMenu_tellsTheReasonsForTheSign()
{
    desk_->store.execute(u"UPDATE Cuts SET Glass_W = -3.8 WHERE NUM = 3"_s);
    desk_->form()->GetOrderDetails(1);
    QTRY_VERIFY(desk_->timerRests());
    QMenu* menu = openMenu();
    QVERIFY(menu != nullptr);
    const QAction* first = menu->actions().constFirst();
    QVERIFY2(first->text().contains(u"זכוכית, רוחב"_s), qPrintable(first->text()));
    QVERIFY(!first->isEnabled());
    menu->close();
}

void OrderKeysTest::f6_goesFromPartToPart()
{
    desk_->on<QLineEdit>("TextNum_2")->setFocus();
    for (const QString& next :
         {u"DBGrid1"_s, u"TextCustomerName"_s, u"TextNum_0"_s, u"DBGrid1"_s}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
        QCOMPARE(focusName(), next);
    }
    for (const QString& next : {u"TextNum_0"_s, u"TextCustomerName"_s, u"DBGrid1"_s}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6, Qt::ShiftModifier);
        QCOMPARE(focusName(), next);
    }
}

void OrderKeysTest::enterInACustomerBox_goesOnAndSelects()
{
    auto* name = desk_->on<QLineEdit>("TextCustomerName");
    auto* address = desk_->on<QLineEdit>("TextCustomerAddress");
    address->setText(u"רחוב"_s);
    name->setFocus();
    QTest::keyClick(name, Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), address);
    QCOMPARE(address->selectedText(), u"רחוב"_s);
}

void OrderKeysTest::enterInAList_goesOnAndKeepsTheText()
{
    auto* kind = desk_->on<controls::DBCombo>("DBComboKind_0");
    kind->setFocus();
    kind->setEditText(u"לבן"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(focusName(), u"DBComboColor_0"_s);
    QCOMPARE(kind->currentText(), u"לבן"_s);
}

/// Three digits for each measure, four times Enter from box to box, and Space on the button.
void OrderKeysTest::nextOpening_takesElevenKeys()
{
    Module1::SelectedSerialNum = static_cast<std::int16_t>(desk_->store.addSeries(
        u"הזזה"_s, {-0.6, -0.6, -2.8, -6.5, -19.6, -19.7, -2.4, -6.9}, 2, 2));
    desk_->on<QLineEdit>("TextNum_0")->setFocus();
    for (const QString& width : {u"120"_s, u"150"_s}) {
        int keys = 0;
        const auto press = [&keys](Qt::Key key) {
            QTest::keyClick(QApplication::focusWidget(), key);
            ++keys;
        };
        for (const QString& measure : {width, u"110"_s}) {
            for (const QChar digit : measure)
                press(Qt::Key(digit.unicode()));
            press(Qt::Key_Return);
            press(Qt::Key_Return);
        }
        QCOMPARE(focusName(), u"CmdAdd"_s);
        press(Qt::Key_Space);
        QCOMPARE(keys, 11);
        QCOMPARE(focusName(), u"TextNum_0"_s);
    }
    const auto stored = desk_->store.rows(u"SELECT MyWidth, MYHeight FROM Cuts WHERE NUM > 3"_s);
    QCOMPARE(stored, (QList<QList<QVariant>>{{120.0, 110.0}, {150.0, 110.0}}));
}

/// Printing an order without customer details stores them as Null, so that the print command leaves
/// a trace in the store.
void OrderKeysTest::ctrlP_printsTheOrder()
{
    desk_->store.execute(u"UPDATE Orders SET CustomerName = 'x'"_s);
    desk_->on<QLineEdit>("TextNum_0")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_P, Qt::ControlModifier);
    QTRY_VERIFY(driving::shownWindow(u"DataReport1"_s) != nullptr);
    QVERIFY(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).isNull());
    driving::closeWindow(u"DataReport1"_s);
}

/// The keys are held since another window was in front, so that only their repetitions come here.
void OrderKeysTest::heldKeys_pressNoButtonAndMoveNoFocus()
{
    desk_->store.execute(u"UPDATE Orders SET CustomerName = 'x'"_s);
    auto* width = desk_->on<QLineEdit>("TextNum_0");
    width->setFocus();
    const auto repeat = [width](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::simulateEvent(width, true, key, modifiers, {}, true);
    };
    repeat(Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).toString(), u"x"_s);
    QVERIFY(driving::shownWindow(u"DataReport1"_s) == nullptr);
    repeat(Qt::Key_F6, Qt::NoModifier);
    repeat(Qt::Key_F6, Qt::ShiftModifier);
    QCOMPARE(focusName(), u"TextNum_0"_s);
}

void OrderKeysTest::wheelOverAList_changesNoChoice()
{
    auto* kind = desk_->on<controls::DBCombo>("DBComboKind_0");
    kind->addItems({u"a"_s, u"b"_s, u"c"_s});
    kind->setCurrentIndex(0);
    desk_->on<QLineEdit>("TextNum_0")->setFocus();
    testsupport::turnWheel(*kind);
    QCOMPARE(kind->currentText(), u"a"_s);
    QCOMPARE(focusName(), u"TextNum_0"_s);
}

ZOMREL_QTEST_MAIN(OrderKeysTest)
#include "order_keys_test.moc"
