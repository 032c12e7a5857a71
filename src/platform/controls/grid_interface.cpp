#include "platform/controls/grid_interface.h"

#include "platform/controls/grid_parts.h"

#include <QHeaderView>

#include <utility>

namespace controls {

namespace {

/// Returns the screen-reader interface of a column or a cell from the cache `kept`. If the cache
/// does not contain it, creates, registers and caches it. The key is the column or the cell.
template <typename Key, typename Make>
QAccessibleInterface* keptPart(QHash<Key, QAccessible::Id>& kept, const Key& key, const Make& make)
{
    if (const auto found = kept.constFind(key); found != kept.constEnd())
        return QAccessible::accessibleInterface(*found);
    QAccessibleInterface* made = make();
    kept.insert(key, QAccessible::registerAccessibleInterface(made));
    return made;
}

} // namespace

GridInterface::GridInterface(QTableView* grid) : QAccessibleWidget(grid, QAccessible::Table) {}

GridInterface::~GridInterface()
{
    for (const QAccessible::Id id : std::as_const(headers_))
        QAccessible::deleteAccessibleInterface(id);
    for (const QAccessible::Id id : std::as_const(cells_))
        QAccessible::deleteAccessibleInterface(id);
}

QTableView* GridInterface::view() const
{
    return qobject_cast<QTableView*>(object());
}

QList<int> GridInterface::columns() const
{
    return view() == nullptr ? QList<int>() : shownColumns(*view());
}

QAccessibleInterface* GridInterface::header(int column) const
{
    return keptPart(headers_, column, [&] { return new GridHeaderPart(*view(), column); });
}

QAccessibleInterface* GridInterface::cell(const QModelIndex& index) const
{
    if (view() == nullptr || !index.isValid() || view()->isColumnHidden(index.column()))
        return nullptr;
    if (!cells_.contains(QPersistentModelIndex(index)))
        forgetRemovedCells();
    return keptPart(cells_, QPersistentModelIndex(index),
                    [&] { return new GridCellPart(*view(), index); });
}

int GridInterface::rowCount() const
{
    return view() == nullptr || view()->model() == nullptr ? 0 : view()->model()->rowCount();
}

int GridInterface::childCount() const
{
    return (rowCount() + 1) * columnCount();
}

QAccessibleInterface* GridInterface::child(int index) const
{
    const QList<int> shown = columns();
    if (index < 0 || index >= childCount())
        return nullptr;
    const int line = index / static_cast<int>(shown.size());
    const int column = shown[index % shown.size()];
    return line == 0 ? header(column) : cell(view()->model()->index(line - 1, column));
}

int GridInterface::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* part = dynamic_cast<const GridPart*>(child);
    if (part == nullptr || part->parent() != this || part->shownColumn() < 0)
        return -1;
    return (part->row() + 1) * columnCount() + part->shownColumn();
}

QAccessibleInterface* GridInterface::childAt(int x, int y) const
{
    if (view() == nullptr)
        return nullptr;
    const QPoint place(x, y);
    const QHeaderView& top = *view()->horizontalHeader();
    const QPoint inHeader = top.viewport()->mapFromGlobal(place);
    if (top.viewport()->rect().contains(inHeader)) {
        const int column = top.logicalIndexAt(inHeader);
        return column < 0 ? nullptr : header(column);
    }
    return cell(view()->indexAt(view()->viewport()->mapFromGlobal(place)));
}

QAccessibleInterface* GridInterface::focusChild() const
{
    if (view() != nullptr && view()->hasFocus()) {
        if (QAccessibleInterface* current = cell(view()->currentIndex()))
            return current;
    }
    return QAccessibleWidget::focusChild();
}

void* GridInterface::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessibleInterface* GridInterface::cellAt(int row, int column) const
{
    const QList<int> shown = columns();
    if (row < 0 || row >= rowCount() || column < 0 || column >= shown.size())
        return nullptr;
    return cell(view()->model()->index(row, shown[column]));
}

QString GridInterface::columnDescription(int column) const
{
    const QList<int> shown = columns();
    if (column < 0 || column >= shown.size())
        return {};
    return header(shown[column])->text(QAccessible::Name);
}

QList<QAccessibleInterface*> GridInterface::selectedCells() const
{
    QList<QAccessibleInterface*> cells;
    for (const int row : selectedRows()) {
        for (int column = 0; column < columnCount(); ++column)
            cells.append(cellAt(row, column));
    }
    return cells;
}

QList<int> GridInterface::selectedRows() const
{
    QList<int> rows;
    if (view() == nullptr || view()->selectionModel() == nullptr)
        return rows;
    for (const QModelIndex& each : view()->selectionModel()->selectedRows())
        rows.append(each.row());
    return rows;
}

bool GridInterface::selectRow(int row)
{
    const QList<int> shown = columns();
    if (row < 0 || row >= rowCount() || shown.isEmpty())
        return false;
    view()->setCurrentIndex(view()->model()->index(row, shown.constFirst()));
    return view()->currentIndex().row() == row;
}

void GridInterface::modelChange(QAccessibleTableModelChangeEvent* event)
{
    if (event->modelChangeType() != QAccessibleTableModelChangeEvent::DataChanged)
        forgetRemovedCells();
}

/// Removes the screen-reader interfaces of cells that no longer exist from the hash table and
/// deletes them. The keys of removed cells are all invalid and therefore equal. QHash requires
/// different keys when it grows, so the removed cells must not stay in it.
void GridInterface::forgetRemovedCells() const
{
    cells_.removeIf([](const auto& each) {
        if (each.key().isValid())
            return false;
        QAccessible::deleteAccessibleInterface(each.value());
        return true;
    });
}

void announceCell(QTableView& grid, const QModelIndex& cell, QAccessible::Event type)
{
    if (!QAccessible::isActive())
        return;
    const auto* whole = dynamic_cast<GridInterface*>(QAccessible::queryAccessibleInterface(&grid));
    QAccessibleInterface* part = whole == nullptr ? nullptr : whole->cell(cell);
    if (part == nullptr)
        return;
    QAccessibleEvent event(part, type);
    QAccessible::updateAccessibility(&event);
}

} // namespace controls
