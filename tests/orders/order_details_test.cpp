#include "calculation/opening_panel.h"
#include "orders/desk.h"
#include "platform/controls/db_grid.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

#include <QComboBox>
#include <QSignalSpy>

#include <memory>

using namespace Qt::StringLiterals;
using testsupport::Desk;
using testsupport::errorOf;

class OrderDetailsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup();

    void load_showsTheOrder();
    void load_resetsTheChosenSeries();
    void load_givesEachDataControlItsOwnDatabase();
    void lists_changeOnlyWithTheNextLoad();
    void details_clearATypedCustomer();
    void details_ofAMissingOrder_changeOnlyTheCustomer();
    void numberLabel_showsCurrentOrderNum();
    void load_withANullDate_failsWithInvalidUseOfNull();
    void lines_areSortedByDate();

    void save_writesTheOrderOfCurrentOrderNum();
    void save_withEmptyBoxes_storesNull();
    void save_withoutClosing_keepsTheState();
    void save_withClosing_marksTheOrderClosed();
    void save_ofAMissingOrder_changesNothing();
    void boxes_limitTextsToTheFieldSizes();

    void timer_movesToTheLastLine();
    void timer_firesOnce();
    void timer_enabledAgain_doesNotRestart();
    void timer_withoutLines_leavesTheCounterAtZero();
    void details_ofAnEmptyOrder_keepThePreviousCounter();
    void timer_withoutARecordset_failsWithObjectNotSet();
    void addedLine_savesTheCustomerAndIsCounted();

private:
    std::unique_ptr<Desk> desk_;
};

void OrderDetailsTest::cleanup()
{
    QCOMPARE(desk_->boxes.unexpected(), QStringList());
    desk_.reset();
}

void OrderDetailsTest::load_showsTheOrder()
{
    desk_->store.addOrder(3, false, u"2026-02-07"_s);
    desk_->store.execute(
        u"UPDATE Orders SET CustomerName = 'דוד כהן', CustomerTel = '04-8123456'"_s);
    desk_->openOrder(3);

    QVERIFY(desk_->form()->isVisible());
    QCOMPARE(desk_->label("LabelOrderNum"), u"3"_s);
    QCOMPARE(desk_->label("LabelOrderDate"), u"07/02/2026"_s);
    QCOMPARE(desk_->box("TextCustomerName"), u"דוד כהן"_s);
    QCOMPARE(desk_->box("TextCustomerAddress"), QString());
    QCOMPARE(desk_->box("TextCustomerTel"), u"04-8123456"_s);
    QVERIFY(!desk_->on<QPushButton>("CmdOpenOrder")->isEnabled());
    QVERIFY(desk_->on<QPushButton>("CmdCloseOrder")->isEnabled());
}

void OrderDetailsTest::load_resetsTheChosenSeries()
{
    desk_->store.addOrder(1);
    Module1::SelectedSerialNum = 12;
    desk_->openOrder(1);
    QCOMPARE(Module1::SelectedSerialNum, 0);
}

void OrderDetailsTest::load_givesEachDataControlItsOwnDatabase()
{
    desk_->store.addOrder(1);
    desk_->openOrder(1);

    const auto* cut = desk_->on<controls::DataControl>("DataCut");
    QCOMPARE(cut->Recordset().Type(), dao::dbOpenTable);
    QSet<const dao::Database*> databases;
    const QStringList names{u"DataColor_0"_s, u"DataColor_1"_s, u"DataColor_2"_s, u"DataColor_3"_s,
                            u"DataKind_0"_s,  u"DataKind_1"_s,  u"DataKind_2"_s,  u"DataKind_3"_s,
                            u"DataCut"_s,     u"DataOrder"_s,   u"DataAllCuts"_s};
    for (const QString& name : names) {
        const dao::Database& each =
            testsupport::child<controls::DataControl>(*desk_->form(), name)->Database();
        QVERIFY2(each.isOpen(), qPrintable(name));
        databases.insert(&each);
    }
    QCOMPARE(databases.size(), names.size());
    QVERIFY(!desk_->on<controls::DataControl>("DataMDI")->hasRecordset());
}

/// Added or deleted names appear after the form has been loaded again.
void OrderDetailsTest::lists_changeOnlyWithTheNextLoad()
{
    desk_->store.addOrder(1);
    desk_->store.execute(u"INSERT INTO GlassColor (Name) VALUES ('שקוף')"_s);
    desk_->store.addLine(1, 1);
    desk_->store.execute(u"UPDATE Cuts SET Glass_Color = 'שקוף'"_s);
    desk_->openOrder(1);
    desk_->store.execute(u"DELETE FROM GlassColor"_s);
    desk_->store.execute(u"INSERT INTO MashkofKind (Name) VALUES ('חדש')"_s);
    QCOMPARE(desk_->on<QComboBox>("DBComboColor_2")->count(), 1);
    QCOMPARE(desk_->on<QComboBox>("DBComboKind_0")->count(), 0);

    desk_->click("Command2");
    QTRY_VERIFY(desk_->form() == nullptr);
    desk_->openOrder(1);
    QCOMPARE(desk_->on<QComboBox>("DBComboColor_2")->count(), 0);
    QCOMPARE(desk_->on<QComboBox>("DBComboKind_0")->itemText(0), u"חדש"_s);
    QCOMPARE(desk_->store.scalar(u"SELECT Glass_Color FROM Cuts"_s).toString(), u"שקוף"_s);
}

void OrderDetailsTest::details_clearATypedCustomer()
{
    desk_->store.addOrder(1);
    desk_->store.addOrder(2);
    desk_->openOrder(1);
    desk_->type("TextCustomerName", u"לא נשמר"_s);

    Module1::CurrentOrderNum = 2;
    desk_->form()->GetOrderDetails(2);

    QCOMPARE(desk_->box("TextCustomerName"), QString());
    QVERIFY(desk_->store.scalar(u"SELECT CustomerName FROM Orders WHERE Number = 1"_s).isNull());
}

void OrderDetailsTest::details_ofAMissingOrder_changeOnlyTheCustomer()
{
    desk_->addOrderWithLines(1, {1, 2});
    desk_->openOrder(1);
    desk_->type("TextCustomerName", u"שם"_s);
    Module1::CurrentOrderNum = 99;

    desk_->form()->GetOrderDetails(99);

    // The boxes are cleared before the row is searched.
    QCOMPARE(desk_->box("TextCustomerName"), QString());
    QCOMPARE(desk_->label("LabelOrderNum"), u"1"_s);
    QCOMPARE(desk_->lines().Fields(u"Order_Num"_s).Value().toInt(), 1);
}

void OrderDetailsTest::numberLabel_showsCurrentOrderNum()
{
    desk_->store.addOrder(1);
    desk_->store.addOrder(2, false, u"2026-02-20"_s);
    desk_->openOrder(1);

    desk_->form()->GetOrderDetails(2);

    QCOMPARE(desk_->label("LabelOrderNum"), u"1"_s);
    QCOMPARE(desk_->label("LabelOrderDate"), u"20/02/2026"_s);
}

void OrderDetailsTest::load_withANullDate_failsWithInvalidUseOfNull()
{
    desk_->store.addOrder(1);
    desk_->store.execute(u"UPDATE Orders SET Order_Date = NULL"_s);
    QCOMPARE(errorOf([&] { desk_->openOrder(1); }), runtime::InvalidUseOfNull);
    QVERIFY(desk_->form() == nullptr);
}

void OrderDetailsTest::lines_areSortedByDate()
{
    desk_->addOrderWithLines(1, {1, 2, 3});
    desk_->store.execute(u"UPDATE Cuts SET Order_Date = '2026-01-09' WHERE NUM = 1"_s);
    desk_->store.execute(u"UPDATE Cuts SET Order_Date = '2026-01-03' WHERE NUM > 1"_s);
    desk_->openOrder(1);

    QCOMPARE(Module1::SqlText, u"SELECT * FROM CUTS WHERE ORDER_NUM = 1 ORDER BY ORDER_DATE ASC"_s);
    QCOMPARE(desk_->lines().Fields(u"NUM"_s).Value().toInt(), 2);
    desk_->lines().MoveLast();
    QCOMPARE(desk_->lines().Fields(u"NUM"_s).Value().toInt(), 1);
}

void OrderDetailsTest::save_writesTheOrderOfCurrentOrderNum()
{
    desk_->store.addOrder(1);
    desk_->store.addOrder(2);
    desk_->openOrder(1);
    desk_->type("TextCustomerName", u"שם"_s);
    desk_->type("TextCustomerAddress", u"רחוב 5, חיפה"_s);
    desk_->type("TextCustomerTel", u"04-8123456"_s);
    Module1::CurrentOrderNum = 2;

    desk_->form()->SaveOrderDetails(false);

    const auto rows = desk_->store.rows(
        u"SELECT CustomerName, CustomerAddress, CustomerTel FROM Orders ORDER BY Number"_s);
    QVERIFY(rows[0][0].isNull());
    QCOMPARE(rows[1][0].toString(), u"שם"_s);
    QCOMPARE(rows[1][1].toString(), u"רחוב 5, חיפה"_s);
    QCOMPARE(rows[1][2].toString(), u"04-8123456"_s);
    QVERIFY(!desk_->on<controls::DataControl>("DataOrder")->Database().isOpen());
}

void OrderDetailsTest::save_withEmptyBoxes_storesNull()
{
    desk_->store.addOrder(1);
    desk_->store.execute(
        u"UPDATE Orders SET CustomerName = 'א', CustomerAddress = 'ב', CustomerTel = '1'"_s);
    desk_->openOrder(1);
    for (const char* box : {"TextCustomerName", "TextCustomerAddress", "TextCustomerTel"})
        desk_->type(box, QString());

    desk_->form()->SaveOrderDetails(false);

    const auto row =
        desk_->store.rows(u"SELECT CustomerName, CustomerAddress, CustomerTel FROM Orders"_s)[0];
    for (const QVariant& field : row)
        QVERIFY(field.isNull());
    desk_->form()->GetOrderDetails(1);
    QCOMPARE(desk_->box("TextCustomerName"), QString());
}

void OrderDetailsTest::save_withoutClosing_keepsTheState()
{
    desk_->store.addOrder(1, true);
    desk_->openOrder(1);
    desk_->form()->SaveOrderDetails(false);
    QCOMPARE(desk_->store.scalar(u"SELECT Open_Close FROM Orders"_s).toInt(), -1);
}

void OrderDetailsTest::save_withClosing_marksTheOrderClosed()
{
    desk_->store.addOrder(1);
    desk_->openOrder(1);
    desk_->form()->SaveOrderDetails(true);
    QCOMPARE(desk_->store.scalar(u"SELECT Open_Close FROM Orders"_s).toInt(), -1);
}

void OrderDetailsTest::save_ofAMissingOrder_changesNothing()
{
    desk_->store.addOrder(1);
    desk_->openOrder(1);
    Module1::CurrentOrderNum = 50;
    desk_->form()->SaveOrderDetails(true);
    QVERIFY(!desk_->on<controls::DataControl>("DataOrder")->Database().isOpen());
    QCOMPARE(desk_->store.scalar(u"SELECT Open_Close FROM Orders"_s).toInt(), 0);
}

void OrderDetailsTest::boxes_limitTextsToTheFieldSizes()
{
    desk_->store.addOrder(1);
    desk_->openOrder(1);
    for (const char* name : {"TextCustomerName", "TextCustomerAddress", "TextCustomerTel"}) {
        auto* box = desk_->on<QLineEdit>(name);
        box->setFocus();
        QTest::keyClicks(box, QString(60, u'x'));
    }
    desk_->form()->SaveOrderDetails(false);
    const auto row =
        desk_->store.rows(u"SELECT CustomerName, CustomerAddress, CustomerTel FROM Orders"_s)[0];
    QCOMPARE(row[0].toString(), QString(50, u'x'));
    QCOMPARE(row[1].toString(), QString(50, u'x'));
    QCOMPARE(row[2].toString(), QString(20, u'x'));
}

void OrderDetailsTest::timer_movesToTheLastLine()
{
    desk_->addOrderWithLines(1, {1, 2, 3});
    desk_->openOrder(1);
    QCOMPARE(desk_->label("LabelLinesInOrder"), u"0"_s);
    QCOMPARE(desk_->lines().RecordCount(), 1);

    QTRY_VERIFY(desk_->timerRests());

    QCOMPARE(desk_->lines().Fields(u"NUM"_s).Value().toInt(), 3);
    QCOMPARE(desk_->label("LabelLinesInOrder"), u"3"_s);
    QCOMPARE(desk_->on<controls::DBGrid>("DBGrid1")->currentIndex().row(), 2);
}

void OrderDetailsTest::timer_firesOnce()
{
    desk_->addOrderWithLines(1, {1, 2});
    desk_->openOrder(1);
    auto* timer = desk_->on<QTimer>("Timer1");
    QCOMPARE(timer->interval(), 200);
    const QSignalSpy ticks(timer, &QTimer::timeout);
    QTRY_VERIFY(desk_->timerRests());
    QCOMPARE(ticks.count(), 1);
}

void OrderDetailsTest::timer_enabledAgain_doesNotRestart()
{
    desk_->addOrderWithLines(1, {1});
    desk_->openOrder(1);
    auto* timer = desk_->on<QTimer>("Timer1");
    QTRY_VERIFY(timer->remainingTime() < 150);
    desk_->form()->GetOrderAllCuts(1);
    QVERIFY(timer->remainingTime() < 150);
}

void OrderDetailsTest::timer_withoutLines_leavesTheCounterAtZero()
{
    desk_->store.addOrder(1);
    desk_->openOrder(1);
    QTRY_VERIFY(desk_->timerRests());
    QCOMPARE(desk_->label("LabelLinesInOrder"), u"0"_s);
    QVERIFY(!desk_->end.exitStatus());
}

/// An order without lines causes no row event, so the counter label is not updated.
void OrderDetailsTest::details_ofAnEmptyOrder_keepThePreviousCounter()
{
    desk_->addOrderWithLines(1, {1, 2, 3});
    desk_->store.addOrder(2);
    desk_->openOrder(1);
    QTRY_VERIFY(desk_->timerRests());
    QCOMPARE(desk_->label("LabelLinesInOrder"), u"3"_s);
    Module1::CurrentOrderNum = 2;
    desk_->form()->GetOrderDetails(2);
    QTRY_VERIFY(desk_->timerRests());
    QCOMPARE(desk_->label("LabelOrderNum"), u"2"_s);
    QCOMPARE(desk_->lines().RecordCount(), 0);
    QCOMPARE(desk_->label("LabelLinesInOrder"), u"3"_s);
}

void OrderDetailsTest::timer_withoutARecordset_failsWithObjectNotSet()
{
    desk_->boxes.answer(runtime::vbOK);
    desk_->openOrder(8); // There is no such order.
    QCOMPARE(desk_->label("LabelOrderNum"), u"1"_s);
    QCOMPARE(desk_->label("LabelOrderDate"), u"01/01/2002"_s);

    QTRY_VERIFY(desk_->end.exitStatus().has_value());

    QCOMPARE(desk_->end.exitStatus(), 1);
    QVERIFY(desk_->boxes.shown().front().text.startsWith(u"Run-time error '91':"_s));
    desk_->on<QTimer>("Timer1")->stop();
}

void OrderDetailsTest::addedLine_savesTheCustomerAndIsCounted()
{
    desk_->addOrderWithLines(1, {1});
    desk_->openOrder(1);
    QTRY_VERIFY(desk_->timerRests());
    desk_->type("TextCustomerName", u"שם"_s);
    desk_->store.addLine(1, 2);

    emit desk_->form()->opening().lineAdded();

    QCOMPARE(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).toString(), u"שם"_s);
    QVERIFY(!desk_->timerRests());
    QTRY_VERIFY(desk_->timerRests());
    QCOMPARE(desk_->label("LabelLinesInOrder"), u"2"_s);
    QCOMPARE(desk_->lines().Fields(u"NUM"_s).Value().toInt(), 2);
}

ZOMREL_QTEST_MAIN(OrderDetailsTest)
#include "order_details_test.moc"
