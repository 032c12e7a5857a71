#include "platform/controls/db_grid.h"

#include "platform/controls/data_control.h"
#include "sample_store.h"
#include "support/widgets.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using controls::DataControl;
using controls::DBGrid;
using controlstest::SampleStore;

/// Remarks on the rows of a grid, its context menu, and what it shows first in a narrow window.
class DBGridRemarksTest : public QObject
{
    Q_OBJECT

private slots:
    void secondPaint_asksForNoRemarkAgain();
    void changedRow_asksForTheRemarksAgain();
    void remark_readsOnlyLoadedRows();
    void signBesideAFigure_widensItsColumn();
    void rightClickOnARow_asksForTheMenu();
    void rightClickBesideTheRows_asksForNoMenu();
    void menuKey_asksForTheMenuOfTheCurrentRow();
    void narrowGrid_opensAtTheRight();
    void heldKey_actsNotAgain_data();
    void heldKey_actsNotAgain();
};

namespace {

class RemarkForm : public QWidget
{
public:
    explicit RemarkForm(SampleStore& store, const controls::RowRemark& remark, int width = 420)
        : grid(new DBGrid(u"DBGrid1"_s, this)), data(new DataControl(u"Data"_s, this))
    {
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins({});
        column->addWidget(grid);
        grid->setColumns({{u"שם"_s, u"Name"_s, 1}, {u"תאריך"_s, u"Day"_s, 20}});
        if (remark.text)
            grid->setRowRemark(remark, 0);
        grid->setDataSource(data);
        data->setRecordset(store.dynaset());
        resize(width, 200);
        if (!testsupport::showActive(*this))
            qFatal("the form is not active");
        grid->setFocus();
    }

    DBGrid* grid;
    DataControl* data;
};

/// A right click as the window system sends it: first the press, then the request for a menu.
void rightClick(QWidget& widget, const QPoint& place)
{
    QTest::mouseClick(&widget, Qt::RightButton, Qt::NoModifier, place);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, widget.mapToGlobal(place));
    QApplication::sendEvent(&widget, &event);
}

} // namespace

void DBGridRemarksTest::secondPaint_asksForNoRemarkAgain()
{
    SampleStore store;
    store.addLines(4);
    QMap<int, int> asked;
    const RemarkForm form(store, {[&asked](const auto&, int row) {
                                      ++asked[row];
                                      return row == 1 ? u"odd"_s : QString();
                                  },
                                  0});
    form.grid->grab();
    form.grid->grab();
    QCOMPARE(asked, (QMap<int, int>{{0, 1}, {1, 1}, {2, 1}, {3, 1}}));
}

void DBGridRemarksTest::changedRow_asksForTheRemarksAgain()
{
    SampleStore store;
    store.addLines(2);
    const auto remark = [](const dao::RecordsetPages& rows, int row) {
        return rows.value(row, 1).toString();
    };
    const RemarkForm form(store, {remark, 0});
    const QModelIndex second = form.grid->model()->index(1, 0);
    QCOMPARE(second.data(Qt::ToolTipRole).toString(), u"n2"_s);
    dao::Recordset& rows = form.data->Recordset();
    rows.MoveLast();
    rows.Edit();
    rows.Fields(u"Name"_s).SetValue(u"changed"_s);
    rows.Update();
    QCOMPARE(second.data(Qt::ToolTipRole).toString(), u"changed"_s);
    rows.Delete();
    rows.AddNew();
    rows.Fields(u"Name"_s).SetValue(u"new"_s);
    rows.Update();
    const QModelIndex added = form.grid->model()->index(1, 0);
    QCOMPARE(added.data(Qt::ToolTipRole).toString(), u"new"_s);
}

void DBGridRemarksTest::remark_readsOnlyLoadedRows()
{
    SampleStore store;
    store.addLines(400);
    const auto remark = [](const dao::RecordsetPages& rows, int row) {
        int loaded = 0;
        for (int each = std::max(0, row - 50); each < std::min(rows.rowCount(), row + 51); ++each)
            loaded += rows.isLoaded(each) ? 1 : 0;
        return QString::number(loaded);
    };
    const RemarkForm form(store, {remark, 50});
    const auto remarkOn = [&form](int row) {
        return form.grid->model()->index(row, 0).data(Qt::ToolTipRole).toInt();
    };
    QCOMPARE(remarkOn(0), 51);
    QCOMPARE(remarkOn(200), 101);
    QCOMPARE(remarkOn(399), 51);
}

/// A name of digits must be shown whole as well, although the sign takes room in its cell.
void DBGridRemarksTest::signBesideAFigure_widensItsColumn()
{
    SampleStore store;
    store.addLines({u"7000700070"_s});
    const auto remark = [](const auto&, int) { return u"odd"_s; };
    const RemarkForm form(store, {remark, 0}, 200);
    const int figure = form.grid->fontMetrics().horizontalAdvance(u"7000700070"_s);
    const int sign = form.grid->style()->pixelMetric(QStyle::PM_SmallIconSize);
    QTRY_VERIFY(form.grid->columnWidth(0) >= figure + sign);
}

void DBGridRemarksTest::rightClickOnARow_asksForTheMenu()
{
    SampleStore store;
    store.addLines(3);
    const RemarkForm form(store, {});
    const QSignalSpy asked(form.grid, &DBGrid::menuRequested);
    QWidget& viewport = *form.grid->viewport();
    const QPoint place = form.grid->visualRect(form.grid->model()->index(2, 1)).center();
    rightClick(viewport, place);
    QCOMPARE(asked.count(), 1);
    QCOMPARE(asked[0][0].toPoint(), viewport.mapToGlobal(place));
    QCOMPARE(form.grid->currentIndex().row(), 2);
}

void DBGridRemarksTest::rightClickBesideTheRows_asksForNoMenu()
{
    SampleStore store;
    store.addLines(3);
    const RemarkForm form(store, {});
    const QSignalSpy asked(form.grid, &DBGrid::menuRequested);
    rightClick(*form.grid->horizontalHeader()->viewport(), QPoint(30, 5));
    const int below = form.grid->visualRect(form.grid->model()->index(2, 1)).bottom() + 10;
    QVERIFY(below < form.grid->viewport()->height());
    rightClick(*form.grid->viewport(), QPoint(30, below));
    QCOMPARE(asked.count(), 0);
}

void DBGridRemarksTest::menuKey_asksForTheMenuOfTheCurrentRow()
{
    SampleStore store;
    store.addLines(3);
    const RemarkForm form(store, {});
    QTest::keyClick(form.grid, Qt::Key_End);
    const QSignalSpy asked(form.grid, &DBGrid::menuRequested);
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, QPoint(1, 1));
    QApplication::sendEvent(form.grid, &byKey);
    QCOMPARE(asked.count(), 1);
    const QPoint place = form.grid->viewport()->mapFromGlobal(asked[0][0].toPoint());
    QCOMPARE(form.grid->indexAt(place).row(), 2);
}

void DBGridRemarksTest::narrowGrid_opensAtTheRight()
{
    SampleStore store;
    store.sql(u"INSERT INTO Lines (Name, Day, Num) VALUES ('1234567890', '2026-03-01', 1)"_s);
    const RemarkForm form(store, {}, 100);
    const QScrollBar& bar = *form.grid->horizontalScrollBar();
    QTRY_VERIFY(bar.maximum() > 0);
    QTRY_COMPARE(bar.value(), bar.maximum());
    QVERIFY(form.grid->columnViewportPosition(1) + form.grid->columnWidth(1) <=
            form.grid->viewport()->width());
}

void DBGridRemarksTest::heldKey_actsNotAgain_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Enter") << Qt::Key_Return;
    QTest::newRow("Delete") << Qt::Key_Delete;
}

void DBGridRemarksTest::heldKey_actsNotAgain()
{
    QFETCH(Qt::Key, key);
    SampleStore store;
    store.addLines(3);
    const RemarkForm form(store, {});
    const QSignalSpy entered(form.grid, &DBGrid::enterPressed);
    const QSignalSpy deleted(form.grid, &DBGrid::deletePressed);
    QTest::keyPress(form.grid, key);
    QKeyEvent repeated(QEvent::KeyPress, key, Qt::NoModifier, {}, true);
    QApplication::sendEvent(form.grid, &repeated);
    QCOMPARE(entered.count() + deleted.count(), 1);
    form.grid->setEditable(true);
    QApplication::sendEvent(form.grid, &repeated);
    QCOMPARE(store.names().size(), 3);
}

ZOMREL_QTEST_MAIN(DBGridRemarksTest)
#include "db_grid_remarks_test.moc"
