#include "orders/desk.h"
#include "platform/controls/db_grid.h"
#include "platform/dao/recordset.h"

#include <QProgressDialog>

#include <memory>
#include <numeric>

using namespace Qt::StringLiterals;
using testsupport::Desk;

class ClosingDeletingTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup();

    void close_withoutLines_isRefused();
    void close_answeredNo_savesNothing();
    void close_answeredYes_savesPrintsAndUnloads();
    void openOrder_afterClosing_addsTheNextOrder();
    void close_ofAClosedOrder_leavesItClosed();

    void delete_withoutLines_showsNoBox();
    void delete_answeredNo_keepsTheLines();
    void delete_answeredYes_deletesTheCurrentLine();
    void delete_afterChoosingALine_deletesThatLine();
    void delete_ofTheOnlyLine_setsTheCounterToZero();

    void deleteAll_withoutLines_showsNoBox();
    void deleteAll_answeredNo_keepsTheLines();
    void deleteAll_answeredYes_keepsOtherOrders();
    void deleteAll_beforeAllRowsAreRead_deletesTheReachedRows();
    void deleteAll_cancelled_keepsTheRemainingLines();
    void deleteAll_thenClose_isRefusedAndTheOrderStaysOpen();
    void delete_onAClosedOrder_deletesTheLine();

    void finish_withATypedCustomer_savesNothing();
    void load_afterUnload_startsWithInitialValues();

private:
    const runtime::MessageBoxRequest& onlyBox();
    /// Opens the order and reads all its lines, which is the state 200 ms after opening.
    void openRead(int order, const QList<int>& lineNumbers);

    std::unique_ptr<Desk> desk_;
};

namespace {

constexpr int question = runtime::vbYesNo + runtime::vbQuestion + runtime::vbMsgBoxRtlReading;

int withoutRight(int flags)
{
    return flags & ~runtime::vbMsgBoxRight;
}

} // namespace

void ClosingDeletingTest::cleanup()
{
    QCOMPARE(desk_->boxes.unexpected(), QStringList());
    QVERIFY(!desk_->end.exitStatus());
    desk_.reset();
}

const runtime::MessageBoxRequest& ClosingDeletingTest::onlyBox()
{
    if (desk_->boxes.shown().size() != 1)
        qFatal("%zu boxes were shown", desk_->boxes.shown().size());
    return desk_->boxes.shown().front();
}

void ClosingDeletingTest::openRead(int order, const QList<int>& lineNumbers)
{
    desk_->addOrderWithLines(order, lineNumbers);
    desk_->openOrder(order);
    QTRY_VERIFY(desk_->timerRests());
}

void ClosingDeletingTest::close_withoutLines_isRefused()
{
    openRead(1, {});
    desk_->type("TextCustomerName", u"שם"_s);
    desk_->boxes.answer(runtime::vbOK);

    desk_->click("CmdCloseOrder");

    QCOMPARE(onlyBox().text, u"לא ניתן לסגור הזמנה בגלל שאין אף שורה בהזמנה זו!"_s);
    QCOMPARE(onlyBox().title, u"ProjZomrel"_s);
    QCOMPARE(withoutRight(onlyBox().flags),
             runtime::vbOKOnly + runtime::vbCritical + runtime::vbMsgBoxRtlReading);
    QVERIFY(desk_->form()->isVisible());
    QVERIFY(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).isNull());
}

void ClosingDeletingTest::close_answeredNo_savesNothing()
{
    openRead(1, {1});
    desk_->type("TextCustomerName", u"שם"_s);
    desk_->boxes.answer(runtime::vbNo);

    desk_->click("CmdCloseOrder");

    QCOMPARE(onlyBox().text, u"האם אתה בטוח שברצונך לסגור הזמנה זו?"_s);
    QCOMPARE(onlyBox().title, u"סגירת הזמנה"_s);
    QCOMPARE(withoutRight(onlyBox().flags), question);
    QVERIFY(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).isNull());
    QCOMPARE(desk_->store.scalar(u"SELECT Open_Close FROM Orders"_s).toInt(), 0);
    QVERIFY(desk_->form() != nullptr);
}

void ClosingDeletingTest::close_answeredYes_savesPrintsAndUnloads()
{
    openRead(1, {4});
    desk_->type("TextCustomerName", u"שם"_s);
    desk_->boxes.answer(runtime::vbYes);
    const QPointer<orders::FrOrder> form(desk_->form());

    desk_->click("CmdCloseOrder");

    QCOMPARE(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).toString(), u"שם"_s);
    QCOMPARE(desk_->store.scalar(u"SELECT Open_Close FROM Orders"_s).toInt(), -1);
    QCOMPARE(desk_->storedLineNumbers(1), QList<int>{1}); // Printing has numbered the line.
    QTRY_VERIFY(form.isNull());
    QCOMPARE(Module1::CurrentOrderNum, 1);
    QVERIFY(desk_->window.isVisible());
}

void ClosingDeletingTest::openOrder_afterClosing_addsTheNextOrder()
{
    openRead(1, {1});
    desk_->boxes.answer(runtime::vbYes);
    const QPointer<orders::FrOrder> closed(desk_->form());
    desk_->click("CmdCloseOrder");
    QTRY_VERIFY(closed.isNull());

    orders::openOrderLongForm(desk_->dataMDI);

    QCOMPARE(Module1::CurrentOrderNum, 2);
    QCOMPARE(desk_->lines().RecordCount(), 0);
}

void ClosingDeletingTest::close_ofAClosedOrder_leavesItClosed()
{
    openRead(1, {1});
    desk_->store.execute(u"UPDATE Orders SET Open_Close = -1"_s);
    desk_->boxes.answer(runtime::vbYes);
    desk_->click("CmdCloseOrder");
    QCOMPARE(desk_->store.scalar(u"SELECT Open_Close FROM Orders"_s).toInt(), -1);
}

void ClosingDeletingTest::delete_withoutLines_showsNoBox()
{
    openRead(1, {});
    desk_->click("CmdDel");
    QVERIFY(desk_->boxes.shown().empty());
}

void ClosingDeletingTest::delete_answeredNo_keepsTheLines()
{
    openRead(1, {1, 2});
    desk_->boxes.answer(runtime::vbNo);
    desk_->click("CmdDel");

    QCOMPARE(onlyBox().text, u"האם אתה בטוח שברצונך למחוק את ההזמנה הזו??"_s);
    QCOMPARE(onlyBox().title, u"מחיקת הזמנה"_s);
    QCOMPARE(withoutRight(onlyBox().flags), question);
    QCOMPARE(desk_->storedLineNumbers(1), (QList<int>{1, 2}));
}

void ClosingDeletingTest::delete_answeredYes_deletesTheCurrentLine()
{
    openRead(1, {1, 2, 3});
    desk_->type("TextCustomerName", u"שם"_s);
    desk_->boxes.answer(runtime::vbYes);
    desk_->click("CmdDel");

    QCOMPARE(desk_->storedLineNumbers(1), (QList<int>{1, 2}));
    QCOMPARE(desk_->label("LabelLinesInOrder"), u"2"_s);
    QVERIFY(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).isNull());
}

void ClosingDeletingTest::delete_afterChoosingALine_deletesThatLine()
{
    openRead(1, {1, 2, 3});
    auto* grid = desk_->on<controls::DBGrid>("DBGrid1");
    grid->setCurrentIndex(grid->model()->index(1, 0));
    QCOMPARE(desk_->lines().Fields(u"NUM"_s).Value().toInt(), 2);
    desk_->boxes.answer(runtime::vbYes);
    desk_->click("CmdDel");

    QCOMPARE(desk_->storedLineNumbers(1), (QList<int>{1, 3})); // The gap remains.
    QCOMPARE(grid->model()->rowCount(), 2);
    QCOMPARE(desk_->lines().Fields(u"NUM"_s).Value().toInt(), 3);
}

void ClosingDeletingTest::delete_ofTheOnlyLine_setsTheCounterToZero()
{
    openRead(1, {1});
    desk_->boxes.answer(runtime::vbYes);
    desk_->click("CmdDel");
    QCOMPARE(desk_->lines().RecordCount(), 0);
    QCOMPARE(desk_->label("LabelLinesInOrder"), u"0"_s);

    desk_->boxes.clear();
    desk_->click("CmdDel");
    QVERIFY(desk_->boxes.shown().empty());
}

void ClosingDeletingTest::deleteAll_withoutLines_showsNoBox()
{
    openRead(1, {});
    desk_->click("CmdDelAll");
    QVERIFY(desk_->boxes.shown().empty());
}

void ClosingDeletingTest::deleteAll_answeredNo_keepsTheLines()
{
    openRead(1, {1, 2});
    desk_->boxes.answer(runtime::vbNo);
    desk_->click("CmdDelAll");

    QCOMPARE(onlyBox().text, u"האם אתה בטוח שברצונך למחוק את  כל הזמנות ??"_s);
    QCOMPARE(onlyBox().title, u"מחיקת הכל"_s);
    QCOMPARE(withoutRight(onlyBox().flags), question);
    QCOMPARE(desk_->storedLineNumbers(1), (QList<int>{1, 2}));
}

void ClosingDeletingTest::deleteAll_answeredYes_keepsOtherOrders()
{
    desk_->addOrderWithLines(2, {1});
    openRead(1, {1, 2, 3, 4});
    desk_->boxes.answer(runtime::vbYes);
    desk_->click("CmdDelAll");

    QCOMPARE(desk_->storedLineNumbers(1), QList<int>());
    QCOMPARE(desk_->storedLineNumbers(2), QList<int>{1});
    QCOMPARE(desk_->store.scalar(u"SELECT COUNT(*) FROM Orders"_s).toInt(), 2);
    QCOMPARE(desk_->store.scalar(u"SELECT Open_Close FROM Orders WHERE Number = 1"_s).toInt(), 0);
    QCOMPARE(desk_->label("LabelLinesInOrder"), u"0"_s);
    QCOMPARE(desk_->on<controls::DBGrid>("DBGrid1")->model()->rowCount(), 0);
}

void ClosingDeletingTest::deleteAll_beforeAllRowsAreRead_deletesTheReachedRows()
{
    desk_->addOrderWithLines(1, {1, 2, 3});
    desk_->openOrder(1);
    QCOMPARE(desk_->lines().RecordCount(), 1); // Only the first row has been reached.
    desk_->boxes.answer(runtime::vbYes);
    desk_->click("CmdDelAll");
    QCOMPARE(desk_->storedLineNumbers(1), (QList<int>{2, 3}));
}

/// The progress dialog usually appears after half a second. Here it appears after the first
/// deletion, so that on any disk some lines remain when the deletion is cancelled.
void ClosingDeletingTest::deleteAll_cancelled_keepsTheRemainingLines()
{
    QList<int> numbers(20);
    std::iota(numbers.begin(), numbers.end(), 1);
    openRead(1, numbers);
    const auto progress = [this] { return desk_->form()->findChild<QProgressDialog*>(); };
    const QAbstractItemModel* rows = desk_->on<controls::DBGrid>("DBGrid1")->model();
    connect(rows, &QAbstractItemModel::rowsRemoved, this,
            [progress] { progress()->setMinimumDuration(0); });
    QTimer user;
    connect(&user, &QTimer::timeout, this, [progress] {
        if (progress() != nullptr && progress()->isVisible())
            testsupport::child<QPushButton>(*progress(), {})->click();
    });
    user.start(0);
    desk_->boxes.answer(runtime::vbYes);

    desk_->click("CmdDelAll");

    const QList<int> left = desk_->storedLineNumbers(1);
    QVERIFY2(!left.isEmpty() && left.size() < numbers.size(),
             qPrintable(QString::number(left.size())));
    QCOMPARE(left, numbers.last(left.size())); // The first lines have been deleted.
    QCOMPARE(rows->rowCount(), left.size());
    QCOMPARE(desk_->lines().RecordCount(), left.size());
}

void ClosingDeletingTest::deleteAll_thenClose_isRefusedAndTheOrderStaysOpen()
{
    openRead(1, {1, 2});
    desk_->boxes.answer(runtime::vbYes);
    desk_->click("CmdDelAll");
    desk_->boxes.clear();
    desk_->boxes.answer(runtime::vbOK);
    desk_->click("CmdCloseOrder");
    QCOMPARE(onlyBox().flags & runtime::vbCritical, runtime::vbCritical + 0);
    desk_->click("Command2");

    orders::openOrderLongForm(desk_->dataMDI);
    QCOMPARE(Module1::CurrentOrderNum, 1);
}

void ClosingDeletingTest::delete_onAClosedOrder_deletesTheLine()
{
    openRead(1, {1, 2});
    desk_->store.execute(u"UPDATE Orders SET Open_Close = -1"_s);
    desk_->boxes.answer(runtime::vbYes);
    desk_->click("CmdDel");
    QCOMPARE(desk_->storedLineNumbers(1), QList<int>{1});
}

void ClosingDeletingTest::finish_withATypedCustomer_savesNothing()
{
    openRead(1, {1});
    desk_->type("TextCustomerName", u"שם"_s);
    const QPointer<orders::FrOrder> form(desk_->form());
    desk_->click("Command2");
    QTRY_VERIFY(form.isNull());
    QVERIFY(desk_->boxes.shown().empty());
    QVERIFY(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).isNull());
}

void ClosingDeletingTest::load_afterUnload_startsWithInitialValues()
{
    openRead(1, {1});
    desk_->on<QPushButton>("CmdOpenOrder")->setEnabled(true);
    desk_->on<QPushButton>("CmdCloseOrder")->setEnabled(false);
    desk_->on<QLineEdit>("TextNum_0")->setText(u"77"_s);
    const QPointer<orders::FrOrder> former(desk_->form());
    desk_->click("Command2");
    QTRY_VERIFY(former.isNull());

    desk_->openOrder(1);
    QVERIFY(!desk_->on<QPushButton>("CmdOpenOrder")->isEnabled());
    QVERIFY(desk_->on<QPushButton>("CmdCloseOrder")->isEnabled());
    QCOMPARE(desk_->box("TextNum_0"), u"0"_s);
    QCOMPARE(desk_->label("LabelLinesInOrder"), u"0"_s);
}

ZOMREL_QTEST_MAIN(ClosingDeletingTest)
#include "closing_deleting_test.moc"
