#include "orders/desk.h"
#include "platform/controls/db_grid.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

#include <memory>

using namespace Qt::StringLiterals;
using testsupport::Desk;
using testsupport::errorOf;

class NumberingTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup();

    void longForm_withoutOrders_addsOrderOne();
    void shortForm_withoutOrders_addsOrderOne();
    void repeatedCommands_keepTheOpenOrder();
    void longForm_continuesOrAddsAnOrder_data();
    void longForm_continuesOrAddsAnOrder();
    void newOrder_hasOnlyNumberAndDate();
    void numberBeyondSixteenBits_failsWithOverflow_data();
    void numberBeyondSixteenBits_failsWithOverflow();
    void openOrderWithTheHighestNumber_isContinued();
    void missingIndex_failsWithItemNotFound();
    void numberTakenByAnotherStation_isContinuedOrSkipped_data();
    void numberTakenByAnotherStation_isContinuedOrSkipped();
    void firstOrderAddedByAnotherStation_isContinued();
    void severalNumbersTakenByOtherStations_areSkipped();
    void duplicateInAnotherIndex_failsWithDuplicateKey();
    void openOrderWithoutADate_failsWithInvalidUseOfNull();

    void longForm_afterAdding_showsTheDateOfThePreviousOrder();
    void shortForm_afterAdding_showsTheNewOrdersDate();
    void longForm_closesItsDatabase();
    void shortForm_leavesItsDatabaseOpen();
    void longForm_onALoadedForm_keepsTheCustomer();
    void shortForm_onALoadedForm_changesOnlyTheSharedNumber();
    void longForm_selectsTheWidth();
    void longForm_disablesOpenOrder();

    void openOrder_withAnOpenOrder_isRefused();
    void openOrder_afterAnOrderClosedAsBoolean_isRefused();
    void openOrder_afterAnOrderWithStateOne_addsAnOrder();
    void openOrder_withTheNumberTakenMeanwhile_isRefused();
    void openOrder_withoutOrders_failsWithNoCurrentRecord();
    void openOrder_afterTheHighestNumber_failsWithOverflow();

private:
    QList<int> storedNumbers();
    /// Lets another station add the order after this one has looked up the last order and before it
    /// adds the next one.
    void addElsewhereMeanwhile(const QList<int>& numbers, int state);
    /// Changes the state column to a whole number, as in older stores.
    void storeStateAsNumber();

    std::unique_ptr<Desk> desk_;
    QList<int> elsewhere_; ///< Numbers that another station has yet to use.
};

void NumberingTest::cleanup()
{
    QCOMPARE(desk_->boxes.unexpected(), QStringList());
    desk_.reset();
}

QList<int> NumberingTest::storedNumbers()
{
    QList<int> numbers;
    for (const auto& row : desk_->store.rows(u"SELECT Number FROM Orders ORDER BY Number"_s))
        numbers.append(row.first().toInt());
    return numbers;
}

void NumberingTest::storeStateAsNumber()
{
    desk_->store.execute(u"DROP TABLE Orders"_s);
    desk_->store.execute(
        u"CREATE TABLE Orders (Number LONG, Order_Date DATETIME, Open_Close LONG,"
        " CustomerName TEXT(50), CustomerAddress TEXT(50), CustomerTel TEXT(20))"_s);
    desk_->store.execute(u"CREATE UNIQUE INDEX ByNumber ON Orders (Number)"_s);
}

void NumberingTest::longForm_withoutOrders_addsOrderOne()
{
    orders::openOrderLongForm(desk_->dataMDI);

    QCOMPARE(Module1::CurrentOrderNum, 1);
    QCOMPARE(storedNumbers(), QList<int>{1});
    QCOMPARE(desk_->store.scalar(u"SELECT Order_Date FROM Orders"_s).toString(), u"2026-03-01"_s);
    QCOMPARE(desk_->label("LabelOrderNum"), u"1"_s);
    QCOMPARE(desk_->label("LabelOrderDate"), u"01/03/2026"_s);
}

void NumberingTest::shortForm_withoutOrders_addsOrderOne()
{
    orders::openOrderShortForm(desk_->dataMDI);

    QCOMPARE(Module1::CurrentOrderNum, 1);
    QCOMPARE(storedNumbers(), QList<int>{1});
    QVERIFY(desk_->form()->isVisible());
    QCOMPARE(desk_->label("LabelOrderNum"), u"1"_s);
    QCOMPARE(desk_->label("LabelOrderDate"), u"01/03/2026"_s);
}

void NumberingTest::repeatedCommands_keepTheOpenOrder()
{
    for (int i = 0; i < 2; ++i) {
        orders::openOrderLongForm(desk_->dataMDI);
        orders::openOrderShortForm(desk_->dataMDI);
    }
    QCOMPARE(Module1::CurrentOrderNum, 1);
    QCOMPARE(storedNumbers(), QList<int>{1});
}

void NumberingTest::longForm_continuesOrAddsAnOrder_data()
{
    QTest::addColumn<QList<int>>("closed");
    QTest::addColumn<QList<int>>("open");
    QTest::addColumn<int>("current");
    QTest::addColumn<int>("rows");

    QTest::newRow("the last is open") << QList<int>{1, 2} << QList<int>{3} << 3 << 3;
    QTest::newRow("the last is closed") << QList<int>{1, 2, 3} << QList<int>{} << 4 << 4;
    QTest::newRow("an older one is open") << QList<int>{3, 5} << QList<int>{2, 4} << 6 << 5;
    QTest::newRow("gaps are not filled") << QList<int>{1, 9} << QList<int>{} << 10 << 3;
    QTest::newRow("two digits follow nine") << QList<int>{9, 10} << QList<int>{} << 11 << 3;
}

void NumberingTest::longForm_continuesOrAddsAnOrder()
{
    QFETCH(QList<int>, closed);
    QFETCH(QList<int>, open);
    // The highest number is inserted first, because the last row must be determined by the index.
    for (qsizetype i = closed.size(); i > 0; --i)
        desk_->store.addOrder(closed[i - 1], true);
    for (int number : open)
        desk_->store.addOrder(number);

    orders::openOrderLongForm(desk_->dataMDI);

    QTEST(static_cast<int>(Module1::CurrentOrderNum), "current");
    QTEST(desk_->store.scalar(u"SELECT COUNT(*) FROM Orders"_s).toInt(), "rows");
}

void NumberingTest::newOrder_hasOnlyNumberAndDate()
{
    desk_->store.addOrder(7, true);
    orders::openOrderShortForm(desk_->dataMDI);

    const auto row = desk_->store.rows(u"SELECT Number, Order_Date, Open_Close, CustomerName,"
                                       " CustomerAddress, CustomerTel FROM Orders"
                                       " WHERE Number = 8"_s);
    QCOMPARE(row.size(), 1);
    QCOMPARE(row[0][1].toString(), u"2026-03-01"_s);
    QCOMPARE(row[0][2].toInt(), 0);
    for (int customer = 3; customer < 6; ++customer)
        QVERIFY(row[0][customer].isNull());
}

void NumberingTest::numberBeyondSixteenBits_failsWithOverflow_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("closed");

    QTest::newRow("the next does not fit") << 32767 << true;
    QTest::newRow("an open one does not fit") << 32768 << false;
    QTest::newRow("a closed one does not fit") << 40000 << true;
}

void NumberingTest::numberBeyondSixteenBits_failsWithOverflow()
{
    QFETCH(int, number);
    QFETCH(bool, closed);
    desk_->store.addOrder(number, closed);

    QCOMPARE(errorOf([&] { orders::openOrderLongForm(desk_->dataMDI); }), runtime::Overflow);
    QCOMPARE(errorOf([&] { orders::openOrderShortForm(desk_->dataMDI); }), runtime::Overflow);
    QCOMPARE(storedNumbers(), QList<int>{number});
    QVERIFY(desk_->form() == nullptr);
}

void NumberingTest::addElsewhereMeanwhile(const QList<int>& numbers, int state)
{
    elsewhere_ = numbers;
    runtime::clockDoor().replace([this, state] {
        if (!elsewhere_.isEmpty())
            desk_->store.execute(u"INSERT INTO Orders (Number, Order_Date, Open_Close)"
                                 " VALUES (?, '2026-02-28', ?)"_s,
                                 {elsewhere_.takeFirst(), state});
        return QDate(2026, 3, 1);
    });
}

void NumberingTest::openOrderWithTheHighestNumber_isContinued()
{
    desk_->store.addOrder(32767);
    orders::openOrderLongForm(desk_->dataMDI);
    QCOMPARE(desk_->label("LabelOrderNum"), u"32767"_s);
}

void NumberingTest::numberTakenByAnotherStation_isContinuedOrSkipped_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("current");
    QTest::addColumn<QList<int>>("numbers");

    QTest::newRow("order is open") << 0 << 8 << QList<int>{7, 8};
    QTest::newRow("order is closed") << -1 << 9 << QList<int>{7, 8, 9};
}

/// The other station adds its order between the lookup of the last order and the insertion of the
/// next one.
void NumberingTest::numberTakenByAnotherStation_isContinuedOrSkipped()
{
    QFETCH(int, state);
    QFETCH(int, current);
    QFETCH(QList<int>, numbers);
    desk_->store.addOrder(7, true);
    bool taken = false;
    connect(&desk_->dataMDI, &controls::DataControl::currentChanged, this, [&] {
        const auto& rows = desk_->dataMDI.Recordset();
        if (taken || !rows.hasCurrent())
            return;
        taken = true;
        desk_->store.execute(u"INSERT INTO Orders (Number, Order_Date, Open_Close)"
                             " VALUES (8, '2026-02-28', ?)"_s,
                             {state});
    });

    orders::openOrderLongForm(desk_->dataMDI);

    QVERIFY(taken);
    QCOMPARE(Module1::CurrentOrderNum, current);
    QCOMPARE(storedNumbers(), numbers);
    QCOMPARE(desk_->label("LabelOrderNum"), QString::number(current));
    // The date belongs to the current row of the table: the added order, or the one before it.
    QCOMPARE(desk_->label("LabelOrderDate"), u"28/02/2026"_s);
}

void NumberingTest::firstOrderAddedByAnotherStation_isContinued()
{
    addElsewhereMeanwhile({1}, 0);

    orders::openOrderLongForm(desk_->dataMDI);

    QCOMPARE(elsewhere_, QList<int>());
    QCOMPARE(Module1::CurrentOrderNum, 1);
    QCOMPARE(storedNumbers(), QList<int>{1});
    QCOMPARE(desk_->label("LabelOrderDate"), u"28/02/2026"_s);
}

void NumberingTest::severalNumbersTakenByOtherStations_areSkipped()
{
    desk_->store.addOrder(7, true);
    addElsewhereMeanwhile({8, 9, 10}, -1);

    orders::openOrderLongForm(desk_->dataMDI);

    QCOMPARE(elsewhere_, QList<int>());
    QCOMPARE(Module1::CurrentOrderNum, 11);
    QCOMPARE(storedNumbers(), (QList<int>{7, 8, 9, 10, 11}));
}

void NumberingTest::duplicateInAnotherIndex_failsWithDuplicateKey()
{
    desk_->store.addOrder(7, true, u"2026-03-01"_s);
    desk_->store.execute(u"CREATE UNIQUE INDEX ByDate ON Orders (Order_Date)"_s);

    QCOMPARE(errorOf([this] { orders::openOrderLongForm(desk_->dataMDI); }), 3022);
    QCOMPARE(storedNumbers(), QList<int>{7});
}

void NumberingTest::missingIndex_failsWithItemNotFound()
{
    desk_->store.execute(u"DROP TABLE Orders"_s);
    desk_->store.execute(u"CREATE TABLE Orders (Number LONG, Order_Date DATETIME,"
                         " Open_Close BOOLEAN DEFAULT 0)"_s);

    QCOMPARE(errorOf([&] { orders::openOrderLongForm(desk_->dataMDI); }), runtime::ItemNotFound);
    QCOMPARE(storedNumbers(), QList<int>());
}

void NumberingTest::openOrderWithoutADate_failsWithInvalidUseOfNull()
{
    desk_->store.addOrder(4);
    desk_->store.execute(u"UPDATE Orders SET Order_Date = NULL"_s);

    QCOMPARE(errorOf([&] { orders::openOrderLongForm(desk_->dataMDI); }),
             runtime::InvalidUseOfNull);
}

void NumberingTest::longForm_afterAdding_showsTheDateOfThePreviousOrder()
{
    desk_->store.addOrder(11, true, u"2026-01-15"_s);
    orders::openOrderLongForm(desk_->dataMDI);

    QCOMPARE(desk_->label("LabelOrderNum"), u"12"_s);
    QCOMPARE(desk_->label("LabelOrderDate"), u"15/01/2026"_s);

    // The order is open now, so the form shows its own date.
    orders::openOrderLongForm(desk_->dataMDI);
    QCOMPARE(desk_->label("LabelOrderDate"), u"01/03/2026"_s);
}

void NumberingTest::shortForm_afterAdding_showsTheNewOrdersDate()
{
    desk_->store.addOrder(11, true, u"2026-01-15"_s);
    orders::openOrderShortForm(desk_->dataMDI);

    QCOMPARE(desk_->label("LabelOrderNum"), u"12"_s);
    QCOMPARE(desk_->label("LabelOrderDate"), u"01/03/2026"_s);
}

void NumberingTest::longForm_closesItsDatabase()
{
    orders::openOrderLongForm(desk_->dataMDI);
    QVERIFY(!desk_->dataMDI.Database().isOpen());
    QVERIFY(desk_->lines().database()->isOpen());
}

void NumberingTest::shortForm_leavesItsDatabaseOpen()
{
    orders::openOrderShortForm(desk_->dataMDI);
    QVERIFY(desk_->dataMDI.Database().isOpen());
    QCOMPARE(desk_->dataMDI.Recordset().RecordCount(), 1);
}

void NumberingTest::longForm_onALoadedForm_keepsTheCustomer()
{
    desk_->addOrderWithLines(2, {1, 2});
    desk_->store.execute(u"UPDATE Orders SET CustomerName = 'ישן'"_s);
    desk_->addOrderWithLines(3, {7});
    desk_->openOrder(2);
    QTRY_VERIFY(desk_->timerRests());
    desk_->type("TextCustomerTel", u"03-5551234"_s);

    orders::openOrderLongForm(desk_->dataMDI);

    QCOMPARE(Module1::CurrentOrderNum, 3);
    QCOMPARE(desk_->label("LabelOrderNum"), u"3"_s);
    QCOMPARE(desk_->lines().Fields(u"Order_Num"_s).Value().toInt(), 3);
    // The lines are bound, but the timer that moves to the last line does not run.
    QVERIFY(desk_->timerRests());
    QCOMPARE(desk_->label("LabelLinesInOrder"), u"2"_s);
    QCOMPARE(desk_->box("TextCustomerName"), u"ישן"_s);
    QCOMPARE(desk_->box("TextCustomerTel"), u"03-5551234"_s);

    desk_->form()->SaveOrderDetails(false);
    QCOMPARE(desk_->store.scalar(u"SELECT CustomerName FROM Orders WHERE Number = 3"_s).toString(),
             u"ישן"_s);
}

void NumberingTest::shortForm_onALoadedForm_changesOnlyTheSharedNumber()
{
    desk_->addOrderWithLines(2, {1});
    desk_->addOrderWithLines(3, {7});
    desk_->openOrder(2);

    orders::openOrderShortForm(desk_->dataMDI);

    QCOMPARE(Module1::CurrentOrderNum, 3);
    QCOMPARE(desk_->label("LabelOrderNum"), u"2"_s);
    QCOMPARE(desk_->lines().Fields(u"Order_Num"_s).Value().toInt(), 2);
}

void NumberingTest::longForm_selectsTheWidth()
{
    orders::openOrderLongForm(desk_->dataMDI);
    auto* width = desk_->on<QLineEdit>("TextNum_0");
    width->setText(u"123"_s);
    orders::openOrderLongForm(desk_->dataMDI);
    QCOMPARE(width->selectedText(), u"123"_s);
}

void NumberingTest::longForm_disablesOpenOrder()
{
    orders::openOrderLongForm(desk_->dataMDI);
    auto* openOrder = desk_->on<QPushButton>("CmdOpenOrder");
    openOrder->setEnabled(true);
    orders::openOrderShortForm(desk_->dataMDI);
    QVERIFY(openOrder->isEnabled());
    orders::openOrderLongForm(desk_->dataMDI);
    QVERIFY(!openOrder->isEnabled());
}

void NumberingTest::openOrder_withAnOpenOrder_isRefused()
{
    desk_->store.addOrder(5);
    desk_->openOrder(5);
    desk_->on<QPushButton>("CmdOpenOrder")->setEnabled(true);
    desk_->boxes.answer(runtime::vbOK);

    desk_->click("CmdOpenOrder");

    QCOMPARE(desk_->boxes.shown().size(), 1U);
    const runtime::MessageBoxRequest& box = desk_->boxes.shown().front();
    QCOMPARE(box.text, u"יש הזמנה פתוחה , סגור הזמנה קודם!!"_s);
    QCOMPARE(box.title, u"הזמנה פתוחה"_s);
    QCOMPARE(box.flags & ~runtime::vbMsgBoxRight,
             runtime::vbOKOnly + runtime::vbCritical + runtime::vbMsgBoxRtlReading);
    QCOMPARE(Module1::CurrentOrderNum, 5);
    QCOMPARE(storedNumbers(), QList<int>{5});
    QVERIFY(desk_->on<controls::DataControl>("DataOrder")->Database().isOpen());
}

void NumberingTest::openOrder_afterAnOrderClosedAsBoolean_isRefused()
{
    desk_->store.addOrder(5, true);
    desk_->openOrder(5);
    desk_->on<QPushButton>("CmdOpenOrder")->setEnabled(true);
    desk_->boxes.answer(runtime::vbOK);

    desk_->click("CmdOpenOrder");

    QCOMPARE(desk_->boxes.shown().size(), 1U);
    QCOMPARE(storedNumbers(), QList<int>{5});
    QVERIFY(desk_->on<QPushButton>("CmdOpenOrder")->isEnabled());
}

void NumberingTest::openOrder_afterAnOrderWithStateOne_addsAnOrder()
{
    storeStateAsNumber();
    desk_->store.execute(u"INSERT INTO Orders VALUES (5, '2026-01-02', 1, 'לקוח', NULL, NULL)"_s);
    desk_->store.addLine(5, 1);
    desk_->openOrder(5);
    desk_->on<QPushButton>("CmdOpenOrder")->setEnabled(true);
    desk_->on<QPushButton>("CmdCloseOrder")->setEnabled(false);

    desk_->click("CmdOpenOrder");

    QCOMPARE(Module1::CurrentOrderNum, 6);
    QCOMPARE(storedNumbers(), (QList<int>{5, 6}));
    QVERIFY(!desk_->on<controls::DataControl>("DataOrder")->Database().isOpen());
    QVERIFY(!desk_->on<QPushButton>("CmdOpenOrder")->isEnabled());
    QVERIFY(desk_->on<QPushButton>("CmdCloseOrder")->isEnabled());
    QCOMPARE(desk_->lines().RecordCount(), 0);
    QCOMPARE(desk_->label("LabelOrderNum"), u"5"_s);
    QCOMPARE(desk_->label("LabelOrderDate"), u"02/01/2026"_s);
    QCOMPARE(desk_->box("TextCustomerName"), u"לקוח"_s);
}

void NumberingTest::openOrder_withTheNumberTakenMeanwhile_isRefused()
{
    storeStateAsNumber();
    desk_->store.execute(u"INSERT INTO Orders VALUES (5, '2026-01-02', 1, '', NULL, NULL)"_s);
    desk_->openOrder(5);
    desk_->on<QPushButton>("CmdOpenOrder")->setEnabled(true);
    addElsewhereMeanwhile({6}, 0);
    desk_->boxes.answer(runtime::vbOK);

    desk_->click("CmdOpenOrder");

    QCOMPARE(elsewhere_, QList<int>());
    QCOMPARE(storedNumbers(), (QList<int>{5, 6}));
    QCOMPARE(Module1::CurrentOrderNum, 5);
    QCOMPARE(desk_->boxes.shown().size(), std::size_t(1));
    QVERIFY(desk_->on<QPushButton>("CmdOpenOrder")->isEnabled());
}

void NumberingTest::openOrder_withoutOrders_failsWithNoCurrentRecord()
{
    desk_->store.addOrder(1);
    desk_->openOrder(1);
    QTRY_VERIFY(desk_->timerRests());
    desk_->store.execute(u"DELETE FROM Orders"_s);
    desk_->on<QPushButton>("CmdOpenOrder")->setEnabled(true);
    desk_->boxes.answer(runtime::vbOK);

    desk_->click("CmdOpenOrder");

    QCOMPARE(desk_->end.exitStatus(), 1);
    QVERIFY(desk_->boxes.shown().front().text.startsWith(u"Run-time error '3021':"_s));
}

void NumberingTest::openOrder_afterTheHighestNumber_failsWithOverflow()
{
    storeStateAsNumber();
    desk_->store.execute(u"INSERT INTO Orders VALUES (32767, '2026-01-02', 1, NULL, NULL, NULL)"_s);
    desk_->openOrder(32767);
    desk_->on<QPushButton>("CmdOpenOrder")->setEnabled(true);
    desk_->boxes.answer(runtime::vbOK);

    desk_->click("CmdOpenOrder");

    QCOMPARE(desk_->end.exitStatus(), 1);
    QVERIFY(desk_->boxes.shown().front().text.startsWith(u"Run-time error '6':"_s));
    QCOMPARE(storedNumbers(), QList<int>{32767});
}

ZOMREL_QTEST_MAIN(NumberingTest)
#include "numbering_test.moc"
