#include "driving/opening.h"
#include "orders/desk.h"
#include "platform/controls/db_grid.h"
#include "platform/dao/recordset.h"

#include <QScrollBar>

#include <memory>
#include <numeric>

using namespace Qt::StringLiterals;
using controls::DBGrid;
using testsupport::clickCell;
using testsupport::Desk;

/// The order form's line counter after deletions and clicks by mouse and keyboard.
class LineCountTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup();

    void deleteAll_afterOneDeletion_leavesNoLine();
    void deleteAll_beforeTheTimer_deletesTheVisibleLines();
    void click_afterADeletion_countsAllLines();
    void keys_afterADeletion_countAllLines();
    void deletions_oneByOne_countDown();
    void manyLines_deletedWhileScrolled_areCountedDown();
    void refresh_afterAnotherStationDeleted_countsTheRemainingLines();
    void print_withAllLinesVisible_renumbersOnlyTheFirst();

private:
    /// Opens the order and waits until its grid has been painted.
    void openShown(int order, int lineCount);
    DBGrid& grid() const { return *desk_->on<DBGrid>("DBGrid1"); }
    void press(const char* button) const
    {
        QTest::mouseClick(desk_->on<QPushButton>(button), Qt::LeftButton);
    }
    QString counter() const { return desk_->label("LabelLinesInOrder"); }
    int current() const { return desk_->lines().Fields(u"NUM"_s).Value().toInt(); }

    std::unique_ptr<Desk> desk_;
};

void LineCountTest::cleanup()
{
    QCOMPARE(desk_->boxes.unexpected(), QStringList());
    QVERIFY(!desk_->end.exitStatus());
    desk_.reset();
}

void LineCountTest::openShown(int order, int lineCount)
{
    QList<int> numbers(lineCount);
    std::iota(numbers.begin(), numbers.end(), 1);
    desk_->addOrderWithLines(order, numbers);
    desk_->openOrder(order);
    QVERIFY(QTest::qWaitForWindowActive(&desk_->window));
    grid().viewport()->repaint();
}

void LineCountTest::deleteAll_afterOneDeletion_leavesNoLine()
{
    openShown(1, 6);
    QTRY_COMPARE(counter(), u"6"_s);
    clickCell(grid(), 1, 0);
    desk_->boxes.answer(runtime::vbYes);
    press("CmdDel");
    QCOMPARE(counter(), u"5"_s);
    QCOMPARE(desk_->storedLineNumbers(1), (QList<int>{1, 3, 4, 5, 6}));

    desk_->boxes.answer(runtime::vbYes);
    press("CmdDelAll");
    QCOMPARE(desk_->storedLineNumbers(1), QList<int>());
    QCOMPARE(counter(), u"0"_s);
    QCOMPARE(grid().model()->rowCount(), 0);
}

void LineCountTest::deleteAll_beforeTheTimer_deletesTheVisibleLines()
{
    openShown(1, 4);
    desk_->on<QTimer>("Timer1")->stop();
    desk_->boxes.answer(runtime::vbYes);
    press("CmdDelAll");
    QCOMPARE(desk_->storedLineNumbers(1), QList<int>());
    QCOMPARE(counter(), u"0"_s);
}

void LineCountTest::click_afterADeletion_countsAllLines()
{
    openShown(1, 5);
    QTRY_COMPARE(counter(), u"5"_s);
    clickCell(grid(), 1, 0);
    QCOMPARE(current(), 2);
    desk_->boxes.answer(runtime::vbYes);
    press("CmdDel");
    QCOMPARE(counter(), u"4"_s);
    clickCell(grid(), 3, 2);
    QCOMPARE(current(), 5);
    QCOMPARE(counter(), u"4"_s);
}

void LineCountTest::keys_afterADeletion_countAllLines()
{
    openShown(1, 5);
    QTRY_COMPARE(counter(), u"5"_s);
    grid().setFocus();
    QTest::keyClick(&grid(), Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(current(), 1);
    auto* deletion = desk_->on<QPushButton>("CmdDel");
    deletion->setFocus();
    desk_->boxes.answer(runtime::vbYes);
    QTest::keyClick(deletion, Qt::Key_Space);
    QCOMPARE(counter(), u"4"_s);
    grid().setFocus();
    QTest::keyClick(&grid(), Qt::Key_Down);
    QCOMPARE(current(), 3);
    QCOMPARE(counter(), u"4"_s);
}

void LineCountTest::deletions_oneByOne_countDown()
{
    openShown(1, 4);
    QTRY_COMPARE(counter(), u"4"_s);
    clickCell(grid(), 0, 0);
    for (int left = 3; left >= 0; --left) {
        desk_->boxes.answer(runtime::vbYes);
        press("CmdDel");
        QCOMPARE(counter(), QString::number(left));
        QCOMPARE(desk_->storedLineNumbers(1).size(), left);
    }
}

void LineCountTest::manyLines_deletedWhileScrolled_areCountedDown()
{
    openShown(1, 120);
    QTRY_COMPARE(counter(), u"120"_s);
    grid().verticalScrollBar()->setValue(40);
    clickCell(grid(), 42, 0);
    desk_->boxes.answer(runtime::vbYes);
    press("CmdDel");
    QCOMPARE(counter(), u"119"_s);
    clickCell(grid(), 3, 0);
    QCOMPARE(counter(), u"119"_s);
    desk_->boxes.answer(runtime::vbYes);
    press("CmdDelAll");
    QCOMPARE(desk_->storedLineNumbers(1), QList<int>());
    QCOMPARE(counter(), u"0"_s);
}

void LineCountTest::refresh_afterAnotherStationDeleted_countsTheRemainingLines()
{
    openShown(1, 6);
    QTRY_COMPARE(counter(), u"6"_s);
    clickCell(grid(), 0, 0);
    desk_->store.execute(u"DELETE FROM Cuts WHERE NUM IN (3, 4)"_s);
    desk_->boxes.answer(runtime::vbYes);
    press("CmdDel");
    QCOMPARE(desk_->lines().RecordCount(), 3);
    QCOMPARE(grid().model()->rowCount(), 3);
    clickCell(grid(), 2, 0);
    QCOMPARE(counter(), u"3"_s);
    desk_->boxes.answer(runtime::vbYes);
    press("CmdDelAll");
    QCOMPARE(desk_->storedLineNumbers(1), QList<int>());
}

void LineCountTest::print_withAllLinesVisible_renumbersOnlyTheFirst()
{
    openShown(1, 3);
    QTRY_COMPARE(counter(), u"3"_s);
    desk_->store.execute(u"UPDATE Cuts SET NUM = NUM * 10"_s);
    press("CmdPrint");
    driving::closeWindow(driving::names::preview);
    QCOMPARE(desk_->storedLineNumbers(1), (QList<int>{1, 20, 30}));
}

ZOMREL_QTEST_MAIN(LineCountTest)
#include "line_count_test.moc"
