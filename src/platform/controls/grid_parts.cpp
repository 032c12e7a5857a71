#include "platform/controls/grid_parts.h"

#include <QHeaderView>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QWindow>

namespace controls {

namespace {

/// Converts a rectangle from viewport coordinates to screen coordinates.
QRect onScreen(const QWidget& viewport, const QRect& rect)
{
    return {viewport.mapToGlobal(rect.topLeft()), rect.size()};
}

} // namespace

QList<int> shownColumns(const QTableView& grid)
{
    QList<int> shown;
    const int count = grid.model() == nullptr ? 0 : grid.model()->columnCount();
    for (int column = 0; column < count; ++column) {
        if (!grid.isColumnHidden(column))
            shown.append(column);
    }
    return shown;
}

int GridPart::shownColumn() const
{
    return grid_ == nullptr ? -1 : static_cast<int>(shownColumns(*grid_).indexOf(column()));
}

bool GridPart::isValid() const
{
    return grid_ != nullptr && grid_->model() != nullptr && shownColumn() >= 0;
}

QWindow* GridPart::window() const
{
    return grid_ == nullptr ? nullptr : grid_->window()->windowHandle();
}

QAccessibleInterface* GridPart::parent() const
{
    return QAccessible::queryAccessibleInterface(grid_);
}

QString GridHeaderPart::text(QAccessible::Text type) const
{
    if (type != QAccessible::Name || !isValid())
        return {};
    return grid()->model()->headerData(column_, Qt::Horizontal).toString();
}

QRect GridHeaderPart::rect() const
{
    if (!isValid())
        return {};
    const QHeaderView& header = *grid()->horizontalHeader();
    return onScreen(*header.viewport(), {header.sectionViewportPosition(column_), 0,
                                         header.sectionSize(column_), header.height()});
}

QAccessible::State GridCellPart::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const Qt::ItemFlags flags = index_.flags();
    state.disabled = !grid()->isEnabled();
    state.focusable = true;
    state.focused = grid()->hasFocus() && grid()->currentIndex() == index_;
    state.selectable = true;
    state.selected = isSelected();
    state.editable = flags.testFlag(Qt::ItemIsEditable);
    state.readOnly = !state.editable;
    state.invisible = !grid()->isVisible();
    state.offscreen = !grid()->viewport()->rect().intersects(grid()->visualRect(index_));
    return state;
}

QString GridCellPart::text(QAccessible::Text type) const
{
    if (!isValid())
        return {};
    switch (type) {
    case QAccessible::Name:
        return index_.data(Qt::DisplayRole).toString();
    case QAccessible::Description:
        return index_.data(Qt::AccessibleDescriptionRole).toString();
    default:
        return {};
    }
}

QRect GridCellPart::rect() const
{
    return isValid() ? onScreen(*grid()->viewport(), grid()->visualRect(index_)) : QRect();
}

void* GridCellPart::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TableCellInterface)
        return static_cast<QAccessibleTableCellInterface*>(this);
    if (type == QAccessible::ActionInterface)
        return static_cast<QAccessibleActionInterface*>(this);
    return nullptr;
}

bool GridCellPart::isSelected() const
{
    return isValid() && grid()->selectionModel()->isSelected(index_);
}

QList<QAccessibleInterface*> GridCellPart::columnHeaderCells() const
{
    QAccessibleInterface* whole = parent();
    const int shown = shownColumn();
    if (whole == nullptr || shown < 0)
        return {};
    return {whole->child(shown)};
}

void GridCellPart::doAction(const QString& name)
{
    if (name != setFocusAction() || !isValid())
        return;
    // The members are copied before the focus changes, because a handler of the focus change may
    // remove the cell. Removing the cell deletes this object.
    QTableView& view = *grid();
    const QPointer<QTableView> kept(&view);
    const QPersistentModelIndex index = index_;
    view.setFocus(Qt::OtherFocusReason);
    if (kept != nullptr && index.isValid())
        view.setCurrentIndex(index);
}

} // namespace controls
