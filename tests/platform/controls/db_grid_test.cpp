#include "platform/controls/db_grid.h"

#include "platform/controls/data_control.h"
#include "sample_store.h"
#include "support/cpu_clock.h"
#include "support/doors.h"
#include "support/widgets.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using controls::DataControl;
using controls::DBGrid;
using controlstest::SampleStore;
using testsupport::cellText;
using testsupport::clickCell;

namespace {

/// A visible and active form with a grid that shows the lines of the store.
class GridForm : public QWidget
{
public:
    explicit GridForm(SampleStore& store, bool asTable = false)
        : grid(new DBGrid(u"DBGrid1"_s, this)), data(new DataControl(u"DataAllCuts"_s, this)),
          other(new QLineEdit(this))
    {
        setLayoutDirection(Qt::RightToLeft);
        auto* column = new QVBoxLayout(this);
        column->addWidget(grid);
        column->addWidget(other);
        grid->setCaption(u"שורות"_s);
        grid->setColumns({{u"גודל"_s, u"Size"_s, 1, 2},
                          {u"תאריך"_s, u"Day"_s, 2},
                          {u"שם"_s, u"name"_s, 4},
                          {u"Code"_s, u"Code"_s},
                          {u"Kind"_s, u"NoSuchField"_s}});
        grid->setDataSource(data);
        data->setRecordset(asTable ? store.table() : store.dynaset());
        resize(420, 320);
        if (!testsupport::showActive(*this))
            qFatal("the form is not active");
        grid->setFocus();
    }

    QString currentName() const { return data->Recordset().Fields(u"Name"_s).Value().toString(); }

    DBGrid* grid;
    DataControl* data;
    QLineEdit* other;
    QAbstractItemModelTester tester{grid->model(),
                                    QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

class DBGridTest : public QObject
{
    Q_OBJECT

private slots:
    void rows_areShownInTheirColumns();
    void columns_shareTheWidth_data();
    void columns_shareTheWidth();
    void caption_isABandAboveTheHeaders();
    void start_selectsTheRecordsetsRow();
    void keys_moveTheRecordset();
    void move_emitsValidateOnce();
    void click_movesTheRecordset();
    void clickOnTheSameRow_emitsNothing();
    void currentRow_staysSelected();
    void tab_leavesTheGrid();
    void enterAndDoubleClick_emitTheirSignals();
    void typing_changesNothing();
    void disabledGrid_ignoresKeysAndClicks();
    void rowChanges_updateTheGrid();
    void refresh_updatesTheGrid();
    void anotherRecordset_isShown();
    void withoutARecordset_hasNoRows();
    void resize_keepsTheCurrentRowVisible();
    void bigTable_opensAndScrollsFast();
    void readError_opensTheErrorBox();
    void setGridFont_setsSizeAndColour();
};

void DBGridTest::rows_areShownInTheirColumns()
{
    SampleStore store;
    store.sql(u"INSERT INTO Lines (Name, Size, Day, Num) VALUES ('סדרה', -5.5, '2026-03-01', 1), "
              "(NULL, NULL, NULL, 2)"_s);
    const GridForm form(store);
    const QAbstractItemModel& model = *form.grid->model();
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.columnCount(), 5);
    QCOMPARE(model.headerData(2, Qt::Horizontal).toString(), u"שם"_s);
    QCOMPARE(cellText(*form.grid, 0, 0), u"-5.50"_s);
    QCOMPARE(cellText(*form.grid, 0, 1), u"01/03/2026"_s);
    QCOMPARE(cellText(*form.grid, 0, 2), u"סדרה"_s);
    QCOMPARE(cellText(*form.grid, 0, 3), u"1"_s);
    for (int column = 0; column < 3; ++column)
        QCOMPARE(cellText(*form.grid, 1, column), u""_s);
    QCOMPARE(cellText(*form.grid, 0, 4), u""_s); // The table does not have this field.
    const int alignment = model.index(0, 0).data(Qt::TextAlignmentRole).toInt();
    QCOMPARE(alignment, int(Qt::AlignRight | Qt::AlignVCenter));
    QCOMPARE(form.grid->layoutDirection(), Qt::LeftToRight);
    QVERIFY(!form.grid->verticalHeader()->isVisible());
}

void DBGridTest::columns_shareTheWidth_data()
{
    QTest::addColumn<int>("rows");
    QTest::newRow("without a scroll bar") << 2;
    QTest::newRow("beside a scroll bar") << 60;
}

void DBGridTest::columns_shareTheWidth()
{
    QFETCH(const int, rows);
    SampleStore store;
    store.addLines(rows);
    GridForm form(store);
    QVERIFY(form.grid->isColumnHidden(3));
    QVERIFY(form.grid->isColumnHidden(4));
    for (const int width : {form.width(), 420, 611, 333}) {
        form.resize(width, 320);
        QCOMPARE(form.grid->verticalScrollBar()->isVisible(), rows > 2);
        const int room = form.grid->viewport()->width();
        const int first = form.grid->columnWidth(0);
        QCOMPARE(first + form.grid->columnWidth(1) + form.grid->columnWidth(2), room);
        QVERIFY(qAbs(first - room / 7) <= 1);
        QVERIFY(qAbs(form.grid->columnWidth(1) - 2 * room / 7) <= 1);
        QVERIFY(form.grid->columnViewportPosition(0) < form.grid->columnViewportPosition(2));
    }
}

void DBGridTest::caption_isABandAboveTheHeaders()
{
    SampleStore store;
    const GridForm form(store);
    QCOMPARE(form.grid->property("caption").toString(), u"שורות"_s);
    QCOMPARE(form.grid->accessibleName(), u"שורות"_s);
    QCOMPARE(form.grid->windowTitle(), u"שורות"_s);
    QVERIFY(form.grid->findChildren<QLabel*>().isEmpty());
    const int withBand = form.grid->horizontalHeader()->height();
    form.grid->setCaption({});
    QTRY_VERIFY(form.grid->horizontalHeader()->height() < withBand - 10);
    form.grid->setCaption(u"x"_s);
    QTRY_COMPARE(form.grid->horizontalHeader()->height(), withBand);
}

void DBGridTest::start_selectsTheRecordsetsRow()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s});
    const GridForm form(store);
    QCOMPARE(form.grid->currentIndex().row(), 0);
    form.data->Recordset().MoveLast();
    QCOMPARE(form.grid->currentIndex().row(), 2);
    form.data->Recordset().MovePrevious();
    QCOMPARE(form.grid->currentIndex().row(), 1);
    QVERIFY(form.grid->selectionModel()->isRowSelected(1));
    form.data->Recordset().MoveLast();
    form.data->Recordset().MoveNext(); // The recordset is after its last row.
    QVERIFY(!form.grid->currentIndex().isValid());
}

void DBGridTest::keys_moveTheRecordset()
{
    SampleStore store;
    store.addLines(50);
    const GridForm form(store);
    const auto press = [&form](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(form.grid, key, modifiers);
        return form.currentName();
    };
    QCOMPARE(press(Qt::Key_Down), u"n2"_s);
    QCOMPARE(press(Qt::Key_Down), u"n3"_s);
    QCOMPARE(press(Qt::Key_Up), u"n2"_s);
    QCOMPARE(press(Qt::Key_End, Qt::ControlModifier), u"n50"_s);
    QCOMPARE(press(Qt::Key_Down), u"n50"_s);
    QCOMPARE(press(Qt::Key_Home, Qt::ControlModifier), u"n1"_s);
    QCOMPARE(press(Qt::Key_Up), u"n1"_s);
    press(Qt::Key_PageDown);
    const int page = form.grid->currentIndex().row();
    QVERIFY(page > 2);
    QCOMPARE(form.currentName(), u"n%1"_s.arg(page + 1));
    QCOMPARE(press(Qt::Key_PageUp), u"n1"_s);
    QCOMPARE(press(Qt::Key_End), u"n50"_s);
    QCOMPARE(press(Qt::Key_Home), u"n1"_s);
}

void DBGridTest::move_emitsValidateOnce()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s});
    const GridForm form(store);
    QStringList before;
    connect(form.data, &DataControl::Validate, form.data,
            [&] { before.append(form.currentName()); });
    QTest::keyClick(form.grid, Qt::Key_Down);
    QCOMPARE(before, QStringList{u"a"_s}); // Validate fires once, before the row changes.
    QTest::keyClick(form.grid, Qt::Key_Right);
    QCOMPARE(before.size(), 1); // The other cell belongs to the same row.
    clickCell(*form.grid, 2, 0);
    QCOMPARE(before, (QStringList{u"a"_s, u"b"_s}));
    form.data->Recordset().MoveFirst();
    // The recordset's own move causes no second Validate when the grid follows it.
    QCOMPARE(before.size(), 3);
}

void DBGridTest::click_movesTheRecordset()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s});
    for (const bool asTable : {false, true}) {
        const GridForm form(store, asTable);
        clickCell(*form.grid, 2, 1);
        QCOMPARE(form.currentName(), u"c"_s);
        clickCell(*form.grid, 0, 2);
        QCOMPARE(form.currentName(), u"a"_s);
    }
}

void DBGridTest::clickOnTheSameRow_emitsNothing()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    const GridForm form(store);
    QSignalSpy validate(form.data, &DataControl::Validate);
    clickCell(*form.grid, 0, 0);
    clickCell(*form.grid, 0, 2);
    QCOMPARE(validate.count(), 0);
}

void DBGridTest::currentRow_staysSelected()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    const GridForm form(store);
    const QRect cell = form.grid->visualRect(form.grid->model()->index(0, 0));
    QTest::mouseClick(form.grid->viewport(), Qt::LeftButton, Qt::ControlModifier, cell.center());
    QVERIFY(form.grid->selectionModel()->isRowSelected(0));
    // The click is below the last row.
    QTest::mouseClick(form.grid->viewport(), Qt::LeftButton, {},
                      QPoint(20, form.grid->viewport()->height() - 5));
    QVERIFY(form.grid->selectionModel()->isRowSelected(0));
    QCOMPARE(form.currentName(), u"a"_s);
}

void DBGridTest::tab_leavesTheGrid()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    const GridForm form(store);
    QTest::keyClick(form.grid, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), form.other);
    QTest::keyClick(form.other, Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), form.grid);
}

void DBGridTest::enterAndDoubleClick_emitTheirSignals()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    const GridForm form(store);
    QSignalSpy entered(form.grid, &DBGrid::enterPressed);
    QSignalSpy doubleClicked(form.grid, &DBGrid::DblClick);
    QTest::keyClick(form.grid, Qt::Key_Return);
    QTest::keyClick(form.grid, Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(entered.count(), 2);
    testsupport::doubleClickCell(*form.grid, 1, 2);
    QCOMPARE(doubleClicked.count(), 1);
    QCOMPARE(form.currentName(), u"b"_s);
}

void DBGridTest::typing_changesNothing()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    const GridForm form(store);
    QTest::keyClicks(form.grid, u"b"_s);
    QTest::keyClick(form.grid, Qt::Key_F2);
    QTest::keyClick(form.grid, Qt::Key_Delete);
    testsupport::doubleClickCell(*form.grid, 0, 2);
    QVERIFY(form.grid->viewport()->findChildren<QLineEdit*>().isEmpty());
    QCOMPARE(form.currentName(), u"a"_s);
    QCOMPARE(store.names(), (QStringList{u"a"_s, u"b"_s}));
    QVERIFY(form.grid->commitEdits());
}

void DBGridTest::disabledGrid_ignoresKeysAndClicks()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    const GridForm form(store);
    QSignalSpy doubleClicked(form.grid, &DBGrid::DblClick);
    form.grid->setEnabled(false);
    QTest::keyClick(form.grid, Qt::Key_Down);
    testsupport::doubleClickCell(*form.grid, 1, 0);
    QCOMPARE(form.grid->currentIndex().row(), 0);
    QCOMPARE(form.currentName(), u"a"_s);
    QCOMPARE(doubleClicked.count(), 0);
    form.data->Recordset().MoveNext(); // A disabled grid still follows its recordset.
    QCOMPARE(form.grid->currentIndex().row(), 1);
}

void DBGridTest::rowChanges_updateTheGrid()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s});
    const GridForm form(store);
    dao::Recordset& rows = form.data->Recordset();
    rows.AddNew();
    rows.Fields(u"Name"_s).SetValue(u"d"_s);
    rows.Update();
    QCOMPARE(form.grid->model()->rowCount(), 4);
    QCOMPARE(cellText(*form.grid, 3, 2), u"d"_s);
    rows.Edit();
    rows.Fields(u"Name"_s).SetValue(u"A"_s);
    rows.Update();
    QCOMPARE(cellText(*form.grid, 0, 2), u"A"_s);
    QCOMPARE(form.grid->currentIndex().row(), 0);

    rows.MoveNext();
    QSignalSpy validate(form.data, &DataControl::Validate);
    rows.Delete();
    QCOMPARE(validate.count(), 1);
    QCOMPARE(form.grid->model()->rowCount(), 3);
    QVERIFY(!form.grid->currentIndex().isValid());
    rows.MoveNext();
    QCOMPARE(form.grid->currentIndex().row(), 1);
    QCOMPARE(cellText(*form.grid, 1, 2), u"c"_s);

    rows.MoveFirst();
    for (int left = rows.RecordCount(); left > 0; --left) {
        rows.Delete();
        rows.MoveNext();
    }
    QCOMPARE(form.grid->model()->rowCount(), 0);
}

void DBGridTest::refresh_updatesTheGrid()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s});
    const GridForm form(store);
    clickCell(*form.grid, 1, 0);
    store.addLines({u"d"_s});
    store.sql(u"UPDATE Lines SET Name = 'B' WHERE Name = 'b'"_s);
    QSignalSpy validate(form.data, &DataControl::Validate);
    form.data->Refresh();
    QCOMPARE(validate.count(), 1);
    QCOMPARE(form.grid->model()->rowCount(), 4);
    QCOMPARE(form.grid->currentIndex().row(), 1);
    QCOMPARE(cellText(*form.grid, 1, 2), u"B"_s);
    form.data->Recordset().Delete();
    form.data->Refresh();
    QCOMPARE(form.grid->currentIndex().row(), 1);
    QCOMPARE(form.currentName(), u"c"_s);
}

void DBGridTest::anotherRecordset_isShown()
{
    SampleStore store;
    SampleStore another;
    store.addLines({u"a"_s, u"b"_s});
    another.addLines({u"x"_s});
    const GridForm form(store);
    clickCell(*form.grid, 1, 0);
    QSignalSpy validate(form.data, &DataControl::Validate);
    form.data->setRecordset(another.dynaset());
    QCOMPARE(validate.count(), 0);
    QCOMPARE(form.grid->model()->rowCount(), 1);
    QCOMPARE(form.grid->currentIndex().row(), 0);
    QCOMPARE(cellText(*form.grid, 0, 2), u"x"_s);
}

void DBGridTest::withoutARecordset_hasNoRows()
{
    SampleStore store;
    store.addLines({u"a"_s});
    const GridForm form(store);
    form.data->setRecordset(nullptr);
    QCOMPARE(form.grid->model()->rowCount(), 0);
    QTest::keyClick(form.grid, Qt::Key_Down);
    store.sql(u"DELETE FROM Lines"_s);
    form.data->setRecordset(store.dynaset());
    QCOMPARE(form.grid->model()->rowCount(), 0);
    QTest::keyClick(form.grid, Qt::Key_Down);
    QVERIFY(!form.grid->currentIndex().isValid());
}

void DBGridTest::resize_keepsTheCurrentRowVisible()
{
    SampleStore store;
    store.addLines(200);
    GridForm form(store);
    const auto isInSight = [&form] {
        const QRect row = form.grid->visualRect(form.grid->currentIndex());
        return form.grid->viewport()->rect().contains(row);
    };
    form.data->Recordset().MoveLast();
    QTRY_VERIFY(isInSight());
    form.resize(form.width(), 200);
    QTRY_VERIFY(isInSight());
    form.hide();
    form.data->Recordset().MoveFirst();
    form.data->Recordset().MoveLast();
    form.show();
    QTRY_VERIFY(isInSight());

    GridForm fresh(store);
    fresh.hide();
    fresh.data->setRecordset(store.dynaset());
    fresh.data->Recordset().MoveNext();
    fresh.show();
    QCOMPARE(fresh.grid->rowAt(1), 0); // The grid does not scroll without need.
}

void DBGridTest::bigTable_opensAndScrollsFast()
{
    SampleStore store;
    store.addLines(100'000);
    const testsupport::CpuClock clock;
    const GridForm form(store);
    QCOMPARE(form.grid->model()->rowCount(), 100'000);
    QTest::keyClick(form.grid, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(form.currentName(), u"n100000"_s);
    form.grid->verticalScrollBar()->setValue(50'000);
    QCOMPARE(cellText(*form.grid, 50'000, 2), u"n50001"_s);
    // The limit is far above the expected time and far below the time to read the whole table.
    const std::chrono::milliseconds taken = clock.elapsed();
    QVERIFY2(taken < 5s, qPrintable(QString::number(taken.count())));
}

void DBGridTest::readError_opensTheErrorBox()
{
    SampleStore store;
    store.addLines(500);
    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
    const GridForm form(store);
    form.data->Database().Close();
    boxes.answer(runtime::vbOK);
    // The cell is read while Qt paints, so nothing is thrown.
    QCOMPARE(cellText(*form.grid, 400, 2), u""_s);
    QVERIFY(!end.exitStatus());
    QCOMPARE(cellText(*form.grid, 300, 2), u""_s);
    QTRY_COMPARE(end.exitStatus(), 1);
    QCOMPARE(boxes.shown().size(), 1U);
    QVERIFY(boxes.shown()[0].text.startsWith(u"Run-time error '3420':"_s));
}

void DBGridTest::setGridFont_setsSizeAndColour()
{
    DBGrid grid(u"DBGrid1"_s);
    QFont font = grid.font();
    font.setFamily(u"Arial"_s);
    grid.setFont(font);
    const int rowHeight = grid.verticalHeader()->defaultSectionSize();
    controls::SetGridFont(grid);
    QCOMPARE(grid.font().pointSizeF(), 11.0);
    QCOMPARE(grid.font().family(), u"Arial"_s);
    QCOMPARE(grid.palette().color(QPalette::Text), QColor(Qt::black));
    QVERIFY(grid.verticalHeader()->defaultSectionSize() > rowHeight);
}

ZOMREL_QTEST_MAIN(DBGridTest)
#include "db_grid_test.moc"
