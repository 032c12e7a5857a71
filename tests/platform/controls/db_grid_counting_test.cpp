#include "platform/controls/data_control.h"
#include "platform/controls/db_grid.h"
#include "sample_store.h"
#include "support/widgets.h"

#include <QElapsedTimer>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using controls::DataControl;
using controls::DBGrid;
using controlstest::SampleStore;
using testsupport::clickCell;

namespace {

/// A visible, painted form with a grid of about ten rows' height that shows the lines of the store.
class GridForm : public QWidget
{
public:
    explicit GridForm(SampleStore& store)
        : grid(new DBGrid(u"DBGrid1"_s, this)), data(new DataControl(u"DataAllCuts"_s, this))
    {
        auto* column = new QVBoxLayout(this);
        column->addWidget(grid);
        grid->setColumns({{u"שם"_s, u"name"_s, 1}});
        grid->setDataSource(data);
        data->setRecordset(store.dynaset());
        connect(data, &DataControl::Validate, this, [this] { counted = count(); });
        resize(300, 300);
    }

    void showPainted()
    {
        if (!testsupport::showActive(*this))
            qFatal("the form is not active");
        grid->viewport()->repaint();
    }

    int count() const { return data->Recordset().RecordCount(); }
    /// Returns the number, counted from 1, of the row at the bottom edge of the viewport.
    int lastRowInSight() const { return grid->rowAt(grid->viewport()->height() - 1) + 1; }

    DBGrid* grid;
    DataControl* data;
    int counted = -1; ///< The last RecordCount that a Validate handler has seen.
};

} // namespace

/// RecordCount of a recordset whose rows a grid shows.
class DBGridCountingTest : public QObject
{
    Q_OBJECT

private slots:
    void hiddenGrid_countsOneRow();
    void shownGrid_countsTheVisibleRows();
    void shortList_countsAllRows();
    void scrolling_countsTheRowsThatBecomeVisible();
    void longTable_isCountedFast();
    void validate_afterDeletions_seesTheRemainingCount();
    void deletion_countsTheRowThatBecomesVisible();
    void refresh_afterChangesOfAnotherStation_countsTheRows();
    void withoutRows_countsZero();
};

void DBGridCountingTest::hiddenGrid_countsOneRow()
{
    SampleStore store;
    store.addLines(5);
    const GridForm form(store);
    QCOMPARE(form.count(), 1);
}

void DBGridCountingTest::shownGrid_countsTheVisibleRows()
{
    SampleStore store;
    store.addLines(100);
    GridForm form(store);
    form.showPainted();
    const int inSight = form.lastRowInSight();
    QVERIFY(inSight > 3 && inSight < 50);
    QCOMPARE(form.count(), inSight);
    QCOMPARE(form.counted, -1); // Showing rows emits no Validate.
    QCOMPARE(form.data->Recordset().Fields(u"Name"_s).Value().toString(), u"n1"_s);
}

void DBGridCountingTest::shortList_countsAllRows()
{
    SampleStore store;
    store.addLines(5);
    GridForm form(store);
    form.showPainted();
    QCOMPARE(form.count(), 5);
    form.data->setRecordset(store.dynaset());
    QCOMPARE(form.count(), 1); // This is another recordset that has not been painted yet.
    QTRY_COMPARE(form.count(), 5);
}

void DBGridCountingTest::scrolling_countsTheRowsThatBecomeVisible()
{
    SampleStore store;
    store.addLines(100);
    GridForm form(store);
    form.showPainted();
    const int first = form.count();
    QScrollBar* bar = form.grid->verticalScrollBar();
    bar->setValue(bar->maximum() / 2);
    form.grid->viewport()->repaint();
    const int middle = form.count();
    QVERIFY(middle > first);
    QCOMPARE(middle, form.lastRowInSight());
    bar->setValue(0);
    form.grid->viewport()->repaint();
    QCOMPARE(form.count(), middle);
    bar->setValue(bar->maximum());
    form.grid->viewport()->repaint();
    QCOMPARE(form.count(), 100);
}

void DBGridCountingTest::longTable_isCountedFast()
{
    SampleStore store;
    store.addLines(100'000);
    QElapsedTimer clock;
    clock.start();
    GridForm form(store);
    form.showPainted();
    QVERIFY(form.count() < 100);
    // The limit is far above the expected time and far below the time to read the whole table.
    QVERIFY2(clock.elapsed() < 5'000, qPrintable(QString::number(clock.elapsed())));
}

void DBGridCountingTest::validate_afterDeletions_seesTheRemainingCount()
{
    SampleStore store;
    store.addLines(5);
    GridForm form(store);
    form.showPainted();
    clickCell(*form.grid, 1, 0);
    QCOMPARE(form.counted, 5);
    form.data->Recordset().Delete();
    form.data->Refresh();
    QCOMPARE(form.counted, 4);
    clickCell(*form.grid, 3, 0);
    QCOMPARE(form.counted, 4);
    QCOMPARE(form.data->Recordset().Fields(u"Name"_s).Value().toString(), u"n5"_s);
    QTest::keyClick(form.grid, Qt::Key_Up);
    QCOMPARE(form.counted, 4);
    form.data->Refresh();
    QCOMPARE(form.counted, 4);
    QCOMPARE(form.count(), 4);
}

void DBGridCountingTest::deletion_countsTheRowThatBecomesVisible()
{
    SampleStore store;
    store.addLines(100);
    GridForm form(store);
    form.showPainted();
    const int inSight = form.count();
    form.data->Recordset().Delete();
    form.data->Refresh();
    QCOMPARE(form.count(), inSight - 1);
    QTRY_COMPARE(form.count(), inSight);
}

void DBGridCountingTest::refresh_afterChangesOfAnotherStation_countsTheRows()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s});
    GridForm form(store);
    form.showPainted();
    store.sql(u"DELETE FROM Lines WHERE Name = 'b'"_s);
    form.data->Refresh();
    QCOMPARE(form.count(), 2);
    store.addLines({u"d"_s, u"e"_s});
    form.data->Refresh();
    QCOMPARE(form.count(), 4);
    clickCell(*form.grid, 2, 0);
    QCOMPARE(form.counted, 4);
}

void DBGridCountingTest::withoutRows_countsZero()
{
    SampleStore store;
    GridForm form(store);
    form.showPainted();
    QCOMPARE(form.count(), 0);
    form.data->setRecordset(nullptr);
    form.grid->viewport()->repaint(); // Repainting must not throw.
    QVERIFY(!form.data->hasRecordset());
}

ZOMREL_QTEST_MAIN(DBGridCountingTest)
#include "db_grid_counting_test.moc"
