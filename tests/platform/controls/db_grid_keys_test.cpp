#include "platform/controls/db_grid.h"

#include "platform/controls/data_control.h"
#include "sample_store.h"
#include "support/widgets.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using controls::DataControl;
using controls::DBGrid;
using controlstest::SampleStore;

/// Keys in a read-only grid, and the widths of its columns in a narrow window.
class DBGridKeysTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void homeAndEnd_keepTheColumn();
    void deleteKey_emitsItsSignalAndDeletesNothing();
    void typedLetters_moveToTheName_data();
    void typedLetters_moveToTheName();
    void typedLetters_withoutASearchColumn_moveNothing();
    void narrowGrid_showsFiguresAndHeadersWhole_data();
    void narrowGrid_showsFiguresAndHeadersWhole();
    void figureScrolledIntoView_widensItsColumn();
};

namespace {

class GridForm : public QWidget
{
public:
    explicit GridForm(SampleStore& store, int width = 420)
        : grid(new DBGrid(u"DBGrid1"_s, this)), data(new DataControl(u"Data"_s, this))
    {
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins({});
        column->addWidget(grid);
        grid->setColumns({{u"גובה פתח"_s, u"Size"_s, 1, 2},
                          {u"תאריך הזמנה"_s, u"Day"_s, 1},
                          {u"שם"_s, u"Name"_s, 8}});
        grid->setDataSource(data);
        data->setRecordset(store.dynaset());
        resize(width, 200);
        if (!testsupport::showActive(*this))
            qFatal("the form is not active");
        grid->setFocus();
    }

    QString currentName() const { return data->Recordset().Fields(u"Name"_s).Value().toString(); }
    /// Returns the width of the text in the grid's font.
    int textWidth(const QString& text) const { return grid->fontMetrics().horizontalAdvance(text); }

    DBGrid* grid;
    DataControl* data;
};

} // namespace

/// On a slow machine, the letters of one name must not count as the beginnings of several.
void DBGridKeysTest::initTestCase()
{
    QApplication::setKeyboardInputInterval(60000);
}

void DBGridKeysTest::homeAndEnd_keepTheColumn()
{
    SampleStore store;
    store.addLines(30);
    const GridForm form(store);
    form.grid->setCurrentIndex(form.grid->model()->index(4, 2));
    QTest::keyClick(form.grid, Qt::Key_End);
    QCOMPARE(form.currentName(), u"n30"_s);
    QCOMPARE(form.grid->currentIndex().column(), 2);
    QTest::keyClick(form.grid, Qt::Key_Home);
    QCOMPARE(form.currentName(), u"n1"_s);
    QCOMPARE(form.grid->currentIndex().column(), 2);
}

void DBGridKeysTest::deleteKey_emitsItsSignalAndDeletesNothing()
{
    SampleStore store;
    store.addLines(3);
    const GridForm form(store);
    const QSignalSpy pressed(form.grid, &DBGrid::deletePressed);
    QTest::keyClick(form.grid, Qt::Key_Delete);
    QCOMPARE(pressed.count(), 1);
    QCOMPARE(store.names().size(), 3);
}

void DBGridKeysTest::typedLetters_moveToTheName_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("found");
    QTest::newRow("one letter") << u"b"_s << u"beta"_s;
    QTest::newRow("more letters") << u"bi"_s << u"bird"_s;
    QTest::newRow("other case") << u"BI"_s << u"bird"_s;
    QTest::newRow("a blank inside") << u"c d"_s << u"c dur"_s;
    QTest::newRow("from the end to the start") << u"al"_s << u"alpha"_s;
    QTest::newRow("no such name") << u"x"_s << u"alpha"_s;
}

void DBGridKeysTest::typedLetters_moveToTheName()
{
    QFETCH(QString, typed);
    QFETCH(QString, found);
    SampleStore store;
    store.addLines({u"alpha"_s, u"beta"_s, u"bird"_s, u"c dur"_s});
    const GridForm form(store);
    form.grid->setSearchColumn(2);
    QTest::keyClicks(form.grid, typed);
    QCOMPARE(form.currentName(), found);
}

void DBGridKeysTest::typedLetters_withoutASearchColumn_moveNothing()
{
    SampleStore store;
    store.addLines({u"alpha"_s, u"beta"_s});
    const GridForm form(store);
    QTest::keyClicks(form.grid, u"b"_s);
    QCOMPARE(form.currentName(), u"alpha"_s);
}

void DBGridKeysTest::narrowGrid_showsFiguresAndHeadersWhole_data()
{
    QTest::addColumn<int>("width");
    for (const int width : {120, 200, 320, 900})
        QTest::addRow("%d pixels", width) << width;
}

void DBGridKeysTest::narrowGrid_showsFiguresAndHeadersWhole()
{
    QFETCH(int, width);
    SampleStore store;
    store.sql(
        u"INSERT INTO Lines (Name, Size, Day, Num) VALUES ('a', 12345.67, '2026-03-01', 1)"_s);
    const GridForm form(store, width);
    const int figure = form.textWidth(u"12345.67"_s);
    const int day = form.textWidth(u"01/03/2026"_s);
    QTRY_VERIFY(form.grid->columnWidth(0) > figure && form.grid->columnWidth(1) > day);
    for (int column = 0; column < 3; ++column)
        QVERIFY(form.grid->columnWidth(column) >=
                form.grid->horizontalHeader()->sectionSizeHint(column));
    // The grid scrolls where its columns do not fit.
    int needed = 0;
    for (int column = 0; column < 3; ++column)
        needed += form.grid->columnWidth(column);
    QCOMPARE(form.grid->horizontalScrollBar()->maximum() > 0,
             needed > form.grid->viewport()->width());
}

void DBGridKeysTest::figureScrolledIntoView_widensItsColumn()
{
    SampleStore store;
    store.addLines(60);
    store.sql(u"UPDATE Lines SET Size = 123456789.25 WHERE Num = 60"_s);
    const GridForm form(store, 200);
    const int needed = form.textWidth(u"123456789.25"_s);
    QVERIFY(form.grid->columnWidth(0) < needed);
    QTest::keyClick(form.grid, Qt::Key_End);
    QTRY_VERIFY(form.grid->columnWidth(0) > needed);
}

ZOMREL_QTEST_MAIN(DBGridKeysTest)
#include "db_grid_keys_test.moc"
