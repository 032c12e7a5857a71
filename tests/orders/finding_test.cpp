#include "orders/desk.h"
#include "platform/controls/db_grid.h"
#include "platform/controls/twips.h"
#include "platform/dao/recordset.h"
#include "support/cpu_clock.h"

#include <QHeaderView>
#include <QSignalSpy>

#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using driving::inNextModal;
using testsupport::child;
using testsupport::Desk;
using testsupport::errorOf;

class FindingTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup();

    void searchForm_hasItsLayout();
    void grids_haveTheirColumns();
    void open_selectsTheHighestOrderNumber();
    void firstTimerTick_showsTheOrderNumber();
    void move_showsTheLinesAfterTheTimer();
    void manyMoves_updateTheLinesOnce();
    void orderWithoutLines_showsAnEmptyGrid();
    void moveByTheBar_showsTheLines();
    void load_replacesTheShownOrder_data();
    void load_replacesTheShownOrder();
    void load_ofAClosedOrder_leavesItClosed();
    void load_withATypedCustomer_discardsIt();
    void load_withoutAnOrderForm_opensOne();
    void load_beyondSixteenBits_failsWithOverflow();
    void close_loadsNothing();
    void closeBox_loadsNothing();
    void enterInTheGrid_loadsNothing();
    void closeBeforeTheTimer_deletesTheTimer();
    void close_updatesTheLineCounter();
    void open_withoutOrders_failsWithNoCurrentRecord();
    void open_withManyOrders_isFast();

private:
    std::unique_ptr<Desk> desk_;
};

namespace {

dao::Recordset& orderRows(const QDialog& dialog)
{
    return child<controls::DataControl>(dialog, u"DataOrders"_s)->Recordset();
}

dao::Recordset& lineRows(const QDialog& dialog)
{
    return child<controls::DataControl>(dialog, u"DataCuts"_s)->Recordset();
}

controls::DBGrid* grid(const QDialog& dialog, const QString& name)
{
    return child<controls::DBGrid>(dialog, name);
}

int numberUnderCursor(const QDialog& dialog)
{
    return orderRows(dialog).Fields(u"Number"_s).Value().toInt();
}

QStringList headings(const controls::DBGrid& view, bool shown)
{
    QStringList texts;
    for (int column = 0; column < view.model()->columnCount(); ++column) {
        if (view.isColumnHidden(column) != shown)
            texts.append(view.model()->headerData(column, Qt::Horizontal).toString());
    }
    return texts;
}

} // namespace

void FindingTest::cleanup()
{
    QCOMPARE(desk_->boxes.unexpected(), QStringList());
    desk_.reset();
}

void FindingTest::searchForm_hasItsLayout()
{
    desk_->store.addOrder(1);
    inNextModal([](QDialog& dialog) {
        QCOMPARE(dialog.objectName(), u"FormFindOrder"_s);
        QCOMPARE(dialog.windowTitle(), u"חיפוש הזמנה"_s);
        QVERIFY(dialog.isModal());
        QCOMPARE(dialog.layoutDirection(), Qt::RightToLeft);
        QCOMPARE(dialog.size(), QSize(655, 572));
        QCOMPARE(child<QWidget>(dialog, u"DBGrid1"_s)->geometry(), QRect(0, 6, 639, 257));
        QCOMPARE(child<QWidget>(dialog, u"DataOrders"_s)->geometry(), QRect(0, 264, 639, 25));
        QCOMPARE(child<QWidget>(dialog, u"DBGrid2"_s)->geometry(), QRect(88, 290, 407, 193));
        QCOMPARE(child<QWidget>(dialog, u"DataCuts"_s)->geometry(), QRect(88, 486, 407, 25));
        QCOMPARE(child<QWidget>(dialog, u"CmdPic"_s)->geometry(), QRect(312, 522, 89, 41));
        QCOMPARE(child<QWidget>(dialog, u"CmdClose"_s)->geometry(), QRect(174, 520, 89, 41));
        for (const auto& name : {u"DataOrders"_s, u"DataCuts"_s})
            QVERIFY(child<QWidget>(dialog, name)->isVisible());
        QCOMPARE(grid(dialog, u"DBGrid1"_s)->caption(), u"הזמנות"_s);
        QCOMPARE(grid(dialog, u"DBGrid2"_s)->caption(), u"פריטים בהזמנה"_s);
        QCOMPARE(child<QPushButton>(dialog, u"CmdPic"_s)->text(), u"טען הזמנה"_s);
        QCOMPARE(child<QPushButton>(dialog, u"CmdClose"_s)->text(), u"סגור"_s);
        for (const auto& name : {u"CmdPic"_s, u"CmdClose"_s}) {
            const auto* button = child<QPushButton>(dialog, name);
            QVERIFY(!button->icon().availableSizes().isEmpty());
            QCOMPARE(button->font().family(), u"Arial"_s);
            QCOMPARE(button->font().pointSizeF(), 11.25);
            QVERIFY(button->font().bold());
        }
    });
    orders::findOrder();
}

void FindingTest::grids_haveTheirColumns()
{
    desk_->store.addOrder(1);
    inNextModal([](QDialog& dialog) {
        const auto* orderGrid = grid(dialog, u"DBGrid1"_s);
        QCOMPARE(headings(*orderGrid, true), (QStringList{u"מס' טלפון"_s, u"כתובת"_s, u"שם לקוח"_s,
                                                          u"תאריך הזמנה"_s, u"מס' הזמנה"_s}));
        QCOMPARE(headings(*orderGrid, false), QStringList{u"Open_Close"_s});
        const auto* lineGrid = grid(dialog, u"DBGrid2"_s);
        QCOMPARE(headings(*lineGrid, true),
                 (QStringList{u"גובה פתח"_s, u"רוחב פתח"_s, u"שם סדרה"_s, u"סוג חלון"_s}));
        QCOMPARE(headings(*lineGrid, false),
                 (QStringList{
                     u"Mashkof_W"_s,   u"Mashkof_H"_s,    u"Kanaf_W"_s,      u"Kanaf_H"_s,
                     u"Glass_W"_s,     u"Glass_H"_s,      u"Reshet_W"_s,     u"Reshet_H"_s,
                     u"Mashof_Kind"_s, u"Mahkof_Color"_s, u"Mahkof_Count"_s, u"Kanaf_Kind"_s,
                     u"Kanaf_Color"_s, u"Kanaf_Count"_s,  u"Glass_Kind"_s,   u"Glass_Color"_s,
                     u"Glass_Count"_s, u"Reshet_Kind"_s,  u"Reshet_Color"_s, u"Reshet_Count"_s}));
        for (const auto* view : {orderGrid, lineGrid})
            QCOMPARE(view->font().pointSize(), 11);
    });
    orders::findOrder();
}

void FindingTest::open_selectsTheHighestOrderNumber()
{
    desk_->store.addOrder(12);
    desk_->addOrderWithLines(20, {1, 2});
    desk_->store.addOrder(3);
    inNextModal([](QDialog& dialog) {
        QCOMPARE(numberUnderCursor(dialog), 20);
        QCOMPARE(orderRows(dialog).RecordCount(), 3);
        QCOMPARE(grid(dialog, u"DBGrid1"_s)->currentIndex().row(), 2);
        QCOMPARE(lineRows(dialog).Fields(u"Order_Num"_s).Value().toInt(), 20);
    });
    orders::findOrder();
}

void FindingTest::firstTimerTick_showsTheOrderNumber()
{
    desk_->addOrderWithLines(20, {1, 2});
    inNextModal([](QDialog& dialog) {
        auto* timer = child<QTimer>(dialog, u"TimerGetOrder"_s);
        QCOMPARE(timer->interval(), 100);
        QVERIFY(timer->isActive());
        QTRY_VERIFY(!timer->isActive());
        // The text after the colon is the order number, although the caption promises a count.
        QCOMPARE(grid(dialog, u"DBGrid2"_s)->caption(), u"שורות בהזמנה : 20"_s);
    });
    orders::findOrder();
}

void FindingTest::move_showsTheLinesAfterTheTimer()
{
    desk_->addOrderWithLines(1, {1, 2});
    desk_->addOrderWithLines(2, {7});
    inNextModal([](QDialog& dialog) {
        auto* timer = child<QTimer>(dialog, u"TimerGetOrder"_s);
        QTRY_VERIFY(!timer->isActive());
        auto* orderGrid = grid(dialog, u"DBGrid1"_s);
        orderGrid->setCurrentIndex(orderGrid->model()->index(0, 4));
        QVERIFY(timer->isActive());
        QCOMPARE(lineRows(dialog).Fields(u"Order_Num"_s).Value().toInt(), 2); // Not updated yet.
        QTRY_VERIFY(!timer->isActive());
        QCOMPARE(lineRows(dialog).Fields(u"Order_Num"_s).Value().toInt(), 1);
        QCOMPARE(grid(dialog, u"DBGrid2"_s)->caption(), u"שורות בהזמנה : 1"_s);
        QCOMPARE(grid(dialog, u"DBGrid2"_s)->model()->rowCount(), 2);
    });
    orders::findOrder();
}

void FindingTest::manyMoves_updateTheLinesOnce()
{
    for (int number = 1; number <= 30; ++number)
        desk_->store.addOrder(number);
    inNextModal([](QDialog& dialog) {
        auto* timer = child<QTimer>(dialog, u"TimerGetOrder"_s);
        QTRY_VERIFY(!timer->isActive());
        const QSignalSpy ticks(timer, &QTimer::timeout);
        auto* orderGrid = grid(dialog, u"DBGrid1"_s);
        orderGrid->setFocus();
        for (int i = 0; i < 20; ++i)
            QTest::keyClick(orderGrid, Qt::Key_Up);
        QTRY_VERIFY(!timer->isActive());
        QCOMPARE(ticks.count(), 1);
        QCOMPARE(grid(dialog, u"DBGrid2"_s)->caption(), u"שורות בהזמנה : 10"_s);
    });
    orders::findOrder();
}

void FindingTest::orderWithoutLines_showsAnEmptyGrid()
{
    desk_->store.addOrder(4);
    inNextModal([](QDialog& dialog) {
        QTRY_VERIFY(!child<QTimer>(dialog, u"TimerGetOrder"_s)->isActive());
        QCOMPARE(grid(dialog, u"DBGrid2"_s)->model()->rowCount(), 0);
        QCOMPARE(grid(dialog, u"DBGrid2"_s)->caption(), u"שורות בהזמנה : 4"_s);
    });
    orders::findOrder();
}

void FindingTest::moveByTheBar_showsTheLines()
{
    desk_->store.addOrder(4);
    desk_->store.addOrder(5);
    inNextModal([](QDialog& dialog) {
        auto* timer = child<QTimer>(dialog, u"TimerGetOrder"_s);
        QTRY_VERIFY(!timer->isActive());
        orderRows(dialog).MovePrevious(); // The button of the bar does the same.
        QVERIFY(timer->isActive());
        QTRY_COMPARE(grid(dialog, u"DBGrid2"_s)->caption(), u"שורות בהזמנה : 4"_s);
    });
    orders::findOrder();
}

void FindingTest::load_replacesTheShownOrder_data()
{
    QTest::addColumn<bool>("byDoubleClick");
    QTest::newRow("the button") << false;
    QTest::newRow("a double-click") << true;
}

void FindingTest::load_replacesTheShownOrder()
{
    QFETCH(bool, byDoubleClick);
    desk_->addOrderWithLines(1, {1, 2, 3});
    desk_->store.execute(u"UPDATE Orders SET CustomerName = 'דוד'"_s);
    desk_->store.addOrder(2);
    desk_->openOrder(2);
    inNextModal([byDoubleClick](QDialog& dialog) {
        auto* orderGrid = grid(dialog, u"DBGrid1"_s);
        const QModelIndex first = orderGrid->model()->index(0, 4);
        const QPoint place = orderGrid->visualRect(first).center();
        QTest::mouseClick(orderGrid->viewport(), Qt::LeftButton, {}, place);
        if (byDoubleClick)
            QTest::mouseDClick(orderGrid->viewport(), Qt::LeftButton, {}, place);
        else
            child<QPushButton>(dialog, u"CmdPic"_s)->click();
        QVERIFY(!dialog.isVisible());
    });
    desk_->click("CmdFindOrder");

    QCOMPARE(Module1::CurrentOrderNum, 1);
    QCOMPARE(desk_->label("LabelOrderNum"), u"1"_s);
    QCOMPARE(desk_->box("TextCustomerName"), u"דוד"_s);
    QVERIFY(!desk_->on<QPushButton>("CmdOpenOrder")->isEnabled());
    QTRY_VERIFY(desk_->timerRests());
    QCOMPARE(desk_->label("LabelLinesInOrder"), u"3"_s);
    QCOMPARE(desk_->lines().Fields(u"NUM"_s).Value().toInt(), 3);
}

void FindingTest::load_ofAClosedOrder_leavesItClosed()
{
    desk_->store.addOrder(1, true);
    inNextModal([](QDialog& dialog) { child<QPushButton>(dialog, u"CmdPic"_s)->click(); });
    orders::findOrder();
    QCOMPARE(Module1::CurrentOrderNum, 1);
    QCOMPARE(desk_->store.scalar(u"SELECT Open_Close FROM Orders"_s).toInt(), -1);
    QVERIFY(desk_->on<QPushButton>("CmdCloseOrder")->isEnabled());
}

void FindingTest::load_withATypedCustomer_discardsIt()
{
    desk_->store.addOrder(1);
    desk_->openOrder(1);
    desk_->type("TextCustomerName", u"לא נשמר"_s);
    inNextModal([](QDialog& dialog) { child<QPushButton>(dialog, u"CmdPic"_s)->click(); });
    desk_->click("CmdFindOrder");
    QCOMPARE(desk_->box("TextCustomerName"), QString());
    QVERIFY(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).isNull());
}

void FindingTest::load_withoutAnOrderForm_opensOne()
{
    desk_->addOrderWithLines(6, {1, 2});
    inNextModal([](QDialog& dialog) { child<QPushButton>(dialog, u"CmdPic"_s)->click(); });
    orders::findOrder();

    QVERIFY(desk_->form() != nullptr);
    QVERIFY(desk_->form()->isVisible());
    QCOMPARE(desk_->label("LabelOrderNum"), u"6"_s);
    QTRY_COMPARE(desk_->label("LabelLinesInOrder"), u"2"_s);
}

void FindingTest::load_beyondSixteenBits_failsWithOverflow()
{
    desk_->store.addOrder(40000);
    desk_->boxes.answer(runtime::vbOK);
    inNextModal([](QDialog& dialog) { child<QPushButton>(dialog, u"CmdPic"_s)->click(); });
    orders::findOrder();
    QCOMPARE(desk_->end.exitStatus(), 1);
    QVERIFY(desk_->boxes.shown().front().text.startsWith(u"Run-time error '6':"_s));
}

void FindingTest::close_loadsNothing()
{
    desk_->store.addOrder(1);
    desk_->store.addOrder(2);
    desk_->openOrder(1);
    desk_->type("TextCustomerName", u"נשאר"_s);
    inNextModal([](QDialog& dialog) {
        child<QPushButton>(dialog, u"CmdClose"_s)->click();
        QVERIFY(!dialog.isVisible());
    });
    desk_->click("CmdFindOrder");
    QCOMPARE(Module1::CurrentOrderNum, 1);
    QCOMPARE(desk_->label("LabelOrderNum"), u"1"_s);
    QCOMPARE(desk_->box("TextCustomerName"), u"נשאר"_s);
}

void FindingTest::closeBox_loadsNothing()
{
    desk_->store.addOrder(2);
    inNextModal([](QDialog& dialog) {
        dialog.close();
        QVERIFY(!dialog.isVisible());
    });
    orders::findOrder();
    QCOMPARE(Module1::CurrentOrderNum, 0);
    QVERIFY(desk_->form() == nullptr);
}

void FindingTest::enterInTheGrid_loadsNothing()
{
    desk_->store.addOrder(2);
    inNextModal([](QDialog& dialog) {
        auto* orderGrid = grid(dialog, u"DBGrid1"_s);
        orderGrid->setFocus();
        QTest::keyClick(orderGrid, Qt::Key_Return);
        QVERIFY(dialog.isVisible());
    });
    orders::findOrder();
    QVERIFY(desk_->form() == nullptr);
}

void FindingTest::closeBeforeTheTimer_deletesTheTimer()
{
    desk_->store.addOrder(2);
    QPointer<QTimer> timer;
    inNextModal([&timer](QDialog& dialog) {
        timer = child<QTimer>(dialog, u"TimerGetOrder"_s);
        QVERIFY(timer->isActive());
        child<QPushButton>(dialog, u"CmdClose"_s)->click();
    });
    orders::findOrder();
    QVERIFY(timer.isNull());
}

void FindingTest::close_updatesTheLineCounter()
{
    desk_->addOrderWithLines(1, {1, 2, 3});
    desk_->store.addOrder(2);
    desk_->openOrder(1);
    QTRY_VERIFY(desk_->timerRests());
    desk_->on<QLabel>("LabelLinesInOrder")->setText(u"?"_s);
    inNextModal([](QDialog& dialog) { child<QPushButton>(dialog, u"CmdClose"_s)->click(); });
    desk_->click("CmdFindOrder");
    QCOMPARE(desk_->label("LabelLinesInOrder"), u"3"_s);
}

void FindingTest::open_withoutOrders_failsWithNoCurrentRecord()
{
    QCOMPARE(errorOf([] { orders::findOrder(); }), runtime::NoCurrentRecord);
}

void FindingTest::open_withManyOrders_isFast()
{
    constexpr int count = 100000;
    desk_->store.execute(
        u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?)"
        " INSERT INTO Orders (Number, Order_Date, Open_Close, CustomerName)"
        " SELECT i, '2026-01-02', -1, 'לקוח ' || i FROM n"_s,
        {count});
    const testsupport::CpuClock clock;
    inNextModal([&clock](QDialog& dialog) {
        const std::chrono::milliseconds taken = clock.elapsed();
        QVERIFY2(taken < 2s, qPrintable(QString::number(taken.count())));
        auto* orderGrid = grid(dialog, u"DBGrid1"_s);
        QCOMPARE(orderGrid->model()->rowCount(), count);
        QCOMPARE(numberUnderCursor(dialog), count);
        orderGrid->setFocus();
        QTest::keyClick(orderGrid, Qt::Key_Home, Qt::ControlModifier);
        QCOMPARE(numberUnderCursor(dialog), 1);
        QTRY_COMPARE(grid(dialog, u"DBGrid2"_s)->caption(), u"שורות בהזמנה : 1"_s);
        QTest::keyClick(orderGrid, Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(numberUnderCursor(dialog), count);
    });
    orders::findOrder();
}

ZOMREL_QTEST_MAIN(FindingTest)
#include "finding_test.moc"
