#include "platform/controls/grid_interface.h"

#include "platform/controls/accessibility.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_grid.h"
#include "sample_store.h"
#include "support/screen_reader.h"
#include "support/widgets.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using controls::DataControl;
using controls::DBGrid;
using controlstest::SampleStore;
using testsupport::ScreenReader;

namespace {

/// A form with a grid of five columns. The second and the fourth one are hidden.
class GridForm : public QWidget
{
public:
    explicit GridForm(SampleStore& store, bool isEditable = false)
        : other(new QLineEdit(this)), grid(new DBGrid(u"DBGrid1"_s, this)),
          data(new DataControl(u"DataLines"_s, this))
    {
        auto* column = new QVBoxLayout(this);
        column->addWidget(other);
        column->addWidget(grid);
        other->setAccessibleName(u"תיבה"_s);
        grid->setCaption(u"שורות"_s);
        grid->setColumns({{u"גודל"_s, u"Size"_s, 1, 2},
                          {u"Code"_s, u"Code"_s},
                          {u"שם"_s, u"Name"_s, 2},
                          {u"Day"_s, u"Day"_s},
                          {u"מס'"_s, u"Num"_s, 1}});
        grid->setEditable(isEditable);
        grid->setDataSource(data);
        data->setRecordset(store.table());
        resize(420, 320);
        if (!testsupport::showActive(*this))
            qFatal("the form is not active");
        other->setFocus();
    }

    QAccessibleInterface& interface() const { return *QAccessible::queryAccessibleInterface(grid); }
    QAccessibleTableInterface& table() const { return *interface().tableInterface(); }
    QString cell(int row, int column) const
    {
        return table().cellAt(row, column)->text(QAccessible::Name);
    }

    QLineEdit* other;
    DBGrid* grid;
    DataControl* data;
};

QStringList childNames(const QAccessibleInterface& parent)
{
    QStringList names;
    for (int i = 0; i < parent.childCount(); ++i)
        names.append(parent.child(i)->text(QAccessible::Name));
    return names;
}

} // namespace

class GridInterfaceTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { controls::installAccessibility(); }

    void children_areTheVisibleHeadersAndCells();
    void cells_knowTheirPlaceAndHeader();
    void placeOnScreen_findsItsPart();
    void currentCell_isFocusedOnlyInAFocusedGrid();
    void focus_announcesTheGridAndThenTheCell();
    void arrowKeys_announceTheCell();
    void action_makesTheCellCurrent();
    void deletedRow_invalidatesOnlyItsCells();
    void editor_isNamedAfterItsColumn();
    void destroyedGrid_takesItsCellsAlong();
};

void GridInterfaceTest::children_areTheVisibleHeadersAndCells()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    const GridForm form(store);
    QCOMPARE(form.interface().role(), QAccessible::Table);
    QCOMPARE(form.interface().text(QAccessible::Name), u"שורות"_s);
    QCOMPARE(childNames(form.interface()), QStringList({u"גודל"_s, u"שם"_s, u"מס'"_s, u""_s, u"a"_s,
                                                        u"1"_s, u""_s, u"b"_s, u"2"_s}));
    QCOMPARE(form.interface().child(9), nullptr);
    QCOMPARE(form.interface().child(-1), nullptr);
    QCOMPARE(form.interface().child(0)->role(), QAccessible::ColumnHeader);
    QCOMPARE(form.interface().child(3)->role(), QAccessible::Cell);
    for (int i = 0; i < form.interface().childCount(); ++i) {
        QCOMPARE(form.interface().indexOfChild(form.interface().child(i)), i);
        QCOMPARE(form.interface().child(i)->parent(), &form.interface());
    }
}

void GridInterfaceTest::cells_knowTheirPlaceAndHeader()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    const GridForm form(store);
    QCOMPARE(form.table().columnCount(), 3);
    QCOMPARE(form.table().rowCount(), 2);
    QCOMPARE(form.table().columnDescription(2), u"מס'"_s);
    QCOMPARE(form.cell(1, 1), u"b"_s);
    QCOMPARE(form.table().cellAt(1, 3), nullptr);
    QCOMPARE(form.table().cellAt(2, 0), nullptr);
    const QAccessibleTableCellInterface& cell = *form.table().cellAt(1, 2)->tableCellInterface();
    QCOMPARE(cell.rowIndex(), 1);
    QCOMPARE(cell.columnIndex(), 2);
    QCOMPARE(cell.columnHeaderCells().size(), 1);
    QCOMPARE(cell.columnHeaderCells().first()->text(QAccessible::Name), u"מס'"_s);
    QCOMPARE(cell.table(), &form.interface());
    QCOMPARE(form.table().selectedRows(), QList<int>{0});
    QCOMPARE(form.table().selectedCells().size(), 3);
    QVERIFY(!cell.isSelected());
}

void GridInterfaceTest::placeOnScreen_findsItsPart()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    const GridForm form(store);
    for (const int child : {0, 2, 4, 8}) {
        QAccessibleInterface* part = form.interface().child(child);
        // The lower edge of a header is below the band with the caption.
        const QPoint place = part->rect().bottomLeft() + QPoint(3, -3);
        QCOMPARE(form.interface().childAt(place.x(), place.y()), part);
    }
    const QModelIndex name = form.grid->model()->index(0, 2);
    const QPoint inside = form.grid->viewport()->mapToGlobal(form.grid->visualRect(name).center());
    QVERIFY(form.interface().child(4)->rect().contains(inside));
    QVERIFY(!form.interface().child(4)->state().offscreen);
}

void GridInterfaceTest::currentCell_isFocusedOnlyInAFocusedGrid()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    const GridForm form(store);
    QAccessibleInterface* current = form.table().cellAt(0, 2);
    QCOMPARE(form.grid->currentIndex(), form.grid->model()->index(0, 4));
    QVERIFY(!current->state().focused);
    QCOMPARE(form.interface().focusChild(), nullptr);
    form.grid->setFocus();
    QVERIFY(current->state().focused);
    QVERIFY(!form.table().cellAt(1, 2)->state().focused);
    QCOMPARE(form.interface().focusChild(), current);
    QVERIFY(current->state().selected);
    QVERIFY(current->state().readOnly);
}

void GridInterfaceTest::focus_announcesTheGridAndThenTheCell()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    const GridForm form(store);
    ScreenReader reader;
    QTest::keyClick(form.other, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), form.grid);
    QStringList focused;
    QTRY_COMPARE((focused += reader.takeFocused()), QStringList({u"שורות"_s, u"1"_s}));
    QTest::keyClick(form.grid, Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(reader.takeFocused(), QStringList{u"תיבה"_s});
}

void GridInterfaceTest::arrowKeys_announceTheCell()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    const GridForm form(store);
    form.grid->setFocus();
    QCoreApplication::processEvents();
    ScreenReader reader;
    QTest::keyClick(form.grid, Qt::Key_Down);
    QCOMPARE(reader.takeFocused(), QStringList{u"2"_s});
    QTest::keyClick(form.grid, Qt::Key_Left); // The column between them is hidden.
    QCOMPARE(reader.takeFocused(), QStringList{u"b"_s});
    form.other->setFocus();
    reader.takeFocused();
    form.data->Recordset().MoveFirst();
    QCOMPARE(reader.takeFocused(), QStringList());
}

void GridInterfaceTest::action_makesTheCellCurrent()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    const GridForm form(store);
    QAccessibleActionInterface* action = form.table().cellAt(1, 1)->actionInterface();
    QCOMPARE(action->actionNames(), QStringList{QAccessibleActionInterface::setFocusAction()});
    action->doAction(QAccessibleActionInterface::setFocusAction());
    QCOMPARE(QApplication::focusWidget(), form.grid);
    QCOMPARE(form.data->Recordset().Fields(u"Name"_s).Value().toString(), u"b"_s);
    QVERIFY(form.table().selectRow(0));
    QCOMPARE(form.data->Recordset().Fields(u"Name"_s).Value().toString(), u"a"_s);
    QVERIFY(!form.table().selectRow(2));
}

void GridInterfaceTest::deletedRow_invalidatesOnlyItsCells()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s});
    const GridForm form(store);
    const ScreenReader reader;
    const QAccessible::Id first = QAccessible::uniqueId(form.table().cellAt(0, 1));
    const QAccessible::Id second = QAccessible::uniqueId(form.table().cellAt(1, 1));
    QAccessibleInterface* third = form.table().cellAt(2, 1);
    form.data->Recordset().MoveNext();
    form.data->Recordset().Delete();
    QTRY_COMPARE(form.table().rowCount(), 2);
    QCOMPARE(QAccessible::uniqueId(form.table().cellAt(0, 1)), first);
    QCOMPARE(QAccessible::accessibleInterface(second), nullptr);
    QCOMPARE(form.table().cellAt(1, 1), third);
    QCOMPARE(third->text(QAccessible::Name), u"c"_s);
    QCOMPARE(form.interface().indexOfChild(third), 7);
}

void GridInterfaceTest::editor_isNamedAfterItsColumn()
{
    SampleStore store;
    store.addLines({u"a"_s});
    const GridForm form(store, true);
    form.grid->setCurrentIndex(form.grid->model()->index(0, 2));
    form.grid->setFocus();
    QVERIFY(form.table().cellAt(0, 1)->state().editable);
    QTest::keyClick(form.grid, Qt::Key_X);
    auto* editor = form.grid->findChild<QLineEdit*>();
    QVERIFY(editor != nullptr);
    QCOMPARE(QAccessible::queryAccessibleInterface(editor)->text(QAccessible::Name), u"שם"_s);
}

void GridInterfaceTest::destroyedGrid_takesItsCellsAlong()
{
    SampleStore store;
    store.addLines({u"a"_s});
    const ScreenReader reader; // Asks for the children of the grid while it is being destroyed.
    auto form = std::make_unique<GridForm>(store);
    const QAccessible::Id grid = QAccessible::uniqueId(&form->interface());
    const QAccessible::Id cell = QAccessible::uniqueId(form->table().cellAt(0, 1));
    const QAccessible::Id header = QAccessible::uniqueId(form->interface().child(0));
    form.reset();
    for (const QAccessible::Id each : {grid, cell, header})
        QCOMPARE(QAccessible::accessibleInterface(each), nullptr);
}

ZOMREL_QTEST_MAIN(GridInterfaceTest)
#include "grid_interface_test.moc"
