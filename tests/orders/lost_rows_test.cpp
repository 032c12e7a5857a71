#include "driving/opening.h"
#include "orders/desk.h"
#include "platform/controls/db_grid.h"
#include "platform/dao/engine/store_mark.h"
#include "platform/dao/recordset.h"

#include <QTimer>

#include <memory>

using namespace Qt::StringLiterals;
using driving::inNextModal;
using testsupport::child;
using testsupport::Desk;
using testsupport::errorOf;

/// The order form with rows that another station has deleted, and with rows that no station would
/// write.
class LostRowsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup();

    void close_ofADeletedOrder_savesNothing();
    void close_afterTheStoreWasRestored_endsTheProgram();
    void print_ofADeletedOrder_savesNothing();
    void load_ofADeletedOrder_clearsOnlyTheCustomer();
    void load_ofADeletedOrderWithoutAForm_failsInTheTimer();
    void move_toADeletedOrder_failsWithRecordDeleted();
    void delete_ofADeletedLine_failsWithRecordDeleted();
    void deleteAll_stopsAtADeletedLine();
    void view_ofADeletedLine_showsTheValuesReadBefore();
    void browse_beyondSixteenBits_failsOnlyAtLoading();
    void move_toAnOrderWithoutANumber_failsWithInvalidUseOfNull();
    void findOrder_withoutANumber_failsWithInvalidUseOfNull();
    void openOrder_afterAnOrderWithoutANumber_failsAndAddsNothing_data();
    void openOrder_afterAnOrderWithoutANumber_failsAndAddsNothing();
    void linesWithNullValues_showEmptyCells();

private:
    void expectEnded(int error);
    /// Adds an order without a number, as an older store may contain it.
    void addOrderWithoutANumber(int state = 0);
    int orderCount() { return desk_->store.scalar(u"SELECT count(*) FROM Orders"_s).toInt(); }

    std::unique_ptr<Desk> desk_;
};

namespace {

void press(const QDialog& dialog, const QString& button)
{
    child<QPushButton>(dialog, button)->click();
}

void goTo(const QDialog& dialog, int row)
{
    auto* grid = child<controls::DBGrid>(dialog, u"DBGrid1"_s);
    grid->setCurrentIndex(grid->model()->index(row, 4));
}

QString linesCaption(const QDialog& dialog)
{
    return child<controls::DBGrid>(dialog, u"DBGrid2"_s)->caption();
}

} // namespace

void LostRowsTest::cleanup()
{
    QCOMPARE(desk_->boxes.unexpected(), QStringList());
    driving::closeWindow(driving::names::preview);
    desk_.reset();
}

void LostRowsTest::expectEnded(int error)
{
    QCOMPARE(desk_->end.exitStatus(), 1);
    const QString text = desk_->boxes.shown().back().text;
    QVERIFY2(text.startsWith(u"Run-time error '%1':"_s.arg(error)), qPrintable(text));
}

void LostRowsTest::addOrderWithoutANumber(int state)
{
    desk_->store.execute(u"DROP TABLE Orders"_s);
    desk_->store.execute(
        u"CREATE TABLE Orders (Number LONG, Order_Date DATETIME, Open_Close BOOLEAN,"
        " CustomerName TEXT(50), CustomerAddress TEXT(50), CustomerTel TEXT(20))"_s);
    desk_->store.execute(u"CREATE UNIQUE INDEX ByNumber ON Orders (Number)"_s);
    desk_->store.execute(u"INSERT INTO Orders (Order_Date, Open_Close) VALUES ('2026-01-02', ?)"_s,
                         {state});
}

/// A missing row is not an error: nothing is saved and the rest of the handler runs.
void LostRowsTest::close_ofADeletedOrder_savesNothing()
{
    desk_->addOrderWithLines(1, {1, 2});
    desk_->openOrder(1);
    desk_->store.execute(u"DELETE FROM Orders"_s);
    desk_->boxes.answer(runtime::vbYes);

    desk_->click("CmdCloseOrder");

    QVERIFY(!desk_->end.exitStatus());
    QTRY_VERIFY(desk_->form() == nullptr);
    QCOMPARE(orderCount(), 0);
    QCOMPARE(desk_->storedLineNumbers(1), QList<int>({1, 2}));
}

/// The restored store holds an order of the same number for another customer.
void LostRowsTest::close_afterTheStoreWasRestored_endsTheProgram()
{
    desk_->addOrderWithLines(1, {1, 2});
    desk_->openOrder(1);
    desk_->store.execute(u"UPDATE Orders SET CustomerName = 'another'"_s);
    desk_->store.execute(u"UPDATE zomrel_store SET generation = 'restored'"_s);
    desk_->boxes.answer(runtime::vbYes);
    desk_->boxes.answer(runtime::vbOK);

    desk_->click("CmdCloseOrder");

    expectEnded(dao::storeReplaced);
    QCOMPARE(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s), u"another"_s);
    QCOMPARE(desk_->store.scalar(u"SELECT count(*) FROM Orders WHERE Open_Close = 0"_s), 1);
}

void LostRowsTest::print_ofADeletedOrder_savesNothing()
{
    desk_->addOrderWithLines(1, {4});
    desk_->openOrder(1);
    desk_->store.execute(u"DELETE FROM Orders"_s);

    desk_->click("CmdPrint");

    QVERIFY(!desk_->end.exitStatus());
    QCOMPARE(orderCount(), 0);
    QCOMPARE(desk_->storedLineNumbers(1), QList<int>{1});
}

/// Only the customer boxes change: they are cleared before the row is searched.
void LostRowsTest::load_ofADeletedOrder_clearsOnlyTheCustomer()
{
    desk_->addOrderWithLines(1, {1, 2, 3});
    desk_->store.addOrder(2);
    desk_->openOrder(1);
    QTRY_VERIFY(desk_->timerRests());
    desk_->type("TextCustomerName", u"דוד"_s);
    inNextModal([this](QDialog& dialog) {
        desk_->store.execute(u"DELETE FROM Orders WHERE Number = 2"_s);
        press(dialog, u"CmdPic"_s);
    });
    desk_->click("CmdFindOrder");

    QVERIFY(!desk_->end.exitStatus());
    QCOMPARE(Module1::CurrentOrderNum, 2);
    QCOMPARE(desk_->label("LabelOrderNum"), u"1"_s);
    QCOMPARE(desk_->label("LabelLinesInOrder"), u"3"_s);
    QCOMPARE(desk_->lines().RecordCount(), 3);
    QCOMPARE(desk_->box("TextCustomerName"), QString());
}

/// Without a loaded form, no timer moves to the last line.
void LostRowsTest::load_ofADeletedOrderWithoutAForm_failsInTheTimer()
{
    desk_->store.addOrder(2);
    desk_->boxes.answer(runtime::vbOK);
    inNextModal([this](QDialog& dialog) {
        desk_->store.execute(u"DELETE FROM Orders"_s);
        press(dialog, u"CmdPic"_s);
    });
    orders::findOrder();
    QCOMPARE(desk_->label("LabelOrderNum"), u"1"_s); // The label keeps its initial caption.
    QTRY_VERIFY(desk_->end.exitStatus().has_value());
    expectEnded(91);
}

void LostRowsTest::move_toADeletedOrder_failsWithRecordDeleted()
{
    desk_->store.addOrder(1);
    desk_->store.addOrder(2);
    desk_->boxes.answer(runtime::vbOK);
    inNextModal([this](QDialog& dialog) {
        QTRY_COMPARE(linesCaption(dialog), u"שורות בהזמנה : 2"_s);
        // The first error ends the program. This test continues, so the timer must not tick again.
        child<QTimer>(dialog, u"TimerGetOrder"_s)->setSingleShot(true);
        desk_->store.execute(u"DELETE FROM Orders WHERE Number = 1"_s);
        goTo(dialog, 0);
        QVERIFY(!desk_->end.exitStatus());
        QTRY_VERIFY(desk_->end.exitStatus().has_value());
    });
    orders::findOrder();
    expectEnded(3167);
}

void LostRowsTest::delete_ofADeletedLine_failsWithRecordDeleted()
{
    desk_->addOrderWithLines(1, {1, 2});
    desk_->openOrder(1);
    QTRY_VERIFY(desk_->timerRests());
    desk_->store.execute(u"DELETE FROM Cuts WHERE NUM = 2"_s);
    desk_->boxes.answer(runtime::vbYes);
    desk_->boxes.answer(runtime::vbOK);

    desk_->click("CmdDel");

    expectEnded(3167);
    QCOMPARE(desk_->storedLineNumbers(1), QList<int>{1});
}

void LostRowsTest::deleteAll_stopsAtADeletedLine()
{
    desk_->addOrderWithLines(1, {1, 2, 3});
    desk_->openOrder(1);
    QTRY_VERIFY(desk_->timerRests());
    desk_->store.execute(u"DELETE FROM Cuts WHERE NUM = 2"_s);
    desk_->boxes.answer(runtime::vbYes);
    desk_->boxes.answer(runtime::vbOK);

    desk_->click("CmdDelAll");

    expectEnded(3167);
    QCOMPARE(desk_->storedLineNumbers(1), QList<int>{3});
}

/// The grid's row keeps the values that were read when it became current.
void LostRowsTest::view_ofADeletedLine_showsTheValuesReadBefore()
{
    desk_->addOrderWithLines(1, {1, 2});
    desk_->openOrder(1);
    QTRY_VERIFY(desk_->timerRests());
    desk_->store.execute(u"DELETE FROM Cuts"_s);
    QString name;
    inNextModal([&name](QDialog& dialog) { name = child<QLabel>(dialog, u"LabelName"_s)->text(); });
    desk_->click("CmdView");
    QCOMPARE(name, u"סדרה 2"_s);
    desk_->boxes.answer(runtime::vbOK);
    testsupport::child<controls::DBGrid>(*desk_->form(), u"DBGrid1"_s)
        ->setCurrentIndex(testsupport::child<controls::DBGrid>(*desk_->form(), u"DBGrid1"_s)
                              ->model()
                              ->index(0, 0));
    desk_->click("CmdView");
    expectEnded(3167);
}

/// The search form shows any number; only the order form is limited to 16 bits.
void LostRowsTest::browse_beyondSixteenBits_failsOnlyAtLoading()
{
    desk_->addOrderWithLines(1, {1});
    desk_->addOrderWithLines(40000, {1, 2});
    desk_->openOrder(1);
    desk_->boxes.answer(runtime::vbOK);
    inNextModal([this](QDialog& dialog) {
        QTRY_COMPARE(linesCaption(dialog), u"שורות בהזמנה : 40000"_s);
        QCOMPARE(child<controls::DBGrid>(dialog, u"DBGrid2"_s)->model()->rowCount(), 2);
        goTo(dialog, 0);
        QTRY_COMPARE(linesCaption(dialog), u"שורות בהזמנה : 1"_s);
        goTo(dialog, 1);
        QVERIFY(!desk_->end.exitStatus());
        press(dialog, u"CmdPic"_s);
        QVERIFY(dialog.isVisible());
    });
    desk_->click("CmdFindOrder");
    expectEnded(6);
    QCOMPARE(Module1::CurrentOrderNum, 1);
    QCOMPARE(desk_->label("LabelOrderNum"), u"1"_s);
}

void LostRowsTest::move_toAnOrderWithoutANumber_failsWithInvalidUseOfNull()
{
    addOrderWithoutANumber();
    desk_->store.addOrder(1);
    desk_->boxes.answer(runtime::vbOK);
    inNextModal([this](QDialog& dialog) {
        QCOMPARE(child<controls::DBGrid>(dialog, u"DBGrid1"_s)->model()->rowCount(), 2);
        QTRY_COMPARE(linesCaption(dialog), u"שורות בהזמנה : 1"_s);
        goTo(dialog, 0);
        QTRY_VERIFY(desk_->end.exitStatus().has_value());
    });
    orders::findOrder();
    expectEnded(94);
}

void LostRowsTest::findOrder_withoutANumber_failsWithInvalidUseOfNull()
{
    addOrderWithoutANumber();
    QCOMPARE(errorOf([] { orders::findOrder(); }), 94);
}

void LostRowsTest::openOrder_afterAnOrderWithoutANumber_failsAndAddsNothing_data()
{
    QTest::addColumn<int>("state");
    QTest::newRow("open") << 0;
    QTest::newRow("closed") << -1;
}

void LostRowsTest::openOrder_afterAnOrderWithoutANumber_failsAndAddsNothing()
{
    QFETCH(int, state);
    addOrderWithoutANumber(state);
    QCOMPARE(errorOf([this] { orders::openOrderLongForm(desk_->dataMDI); }), 94);
    QCOMPARE(orderCount(), 1);
    QCOMPARE(Module1::CurrentOrderNum, 0);
}

/// Null values appear as empty cells.
void LostRowsTest::linesWithNullValues_showEmptyCells()
{
    desk_->store.execute(u"INSERT INTO Orders (Number) VALUES (1)"_s);
    desk_->store.execute(u"INSERT INTO Cuts (Order_Num) VALUES (1)"_s);
    inNextModal([](QDialog& dialog) {
        QTRY_COMPARE(linesCaption(dialog), u"שורות בהזמנה : 1"_s);
        QVERIFY(!dialog.grab().isNull());
        const auto* lines = child<controls::DBGrid>(dialog, u"DBGrid2"_s)->model();
        QCOMPARE(lines->rowCount(), 1);
        for (int column = 0; column < lines->columnCount(); ++column)
            QCOMPARE(lines->index(0, column).data().toString(), QString());
        const auto* all = child<controls::DBGrid>(dialog, u"DBGrid1"_s)->model();
        QCOMPARE(all->index(0, 3).data().toString(), QString());
        QCOMPARE(all->index(0, 4).data().toString(), u"1"_s);
    });
    orders::findOrder();
    QVERIFY(!desk_->end.exitStatus());
}

ZOMREL_QTEST_MAIN(LostRowsTest)
#include "lost_rows_test.moc"
