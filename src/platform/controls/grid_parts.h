#pragma once

#include <QAccessible>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTableView>

namespace controls {

/// Returns the indexes of the visible columns, from left to right.
QList<int> shownColumns(const QTableView& grid);

/// The common base class of the screen-reader interfaces of a grid's headers and cells.
class GridPart : public QAccessibleInterface
{
public:
    explicit GridPart(QTableView& grid) : grid_(&grid) {}

    /// The row of the cell, or -1 for a header.
    virtual int row() const = 0;
    /// The column of the model.
    virtual int column() const = 0;
    /// The position of the column among the visible columns, or -1 if the column is hidden.
    int shownColumn() const;

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    void setText(QAccessible::Text /*type*/, const QString& /*text*/) override {}

protected:
    QTableView* grid() const { return grid_; }

private:
    QPointer<QTableView> grid_;
};

/// The header of a column.
class GridHeaderPart : public GridPart
{
public:
    GridHeaderPart(QTableView& grid, int column) : GridPart(grid), column_(column) {}

    int row() const override { return -1; }
    int column() const override { return column_; }
    QAccessible::Role role() const override { return QAccessible::ColumnHeader; }
    QAccessible::State state() const override { return {}; }
    QString text(QAccessible::Text type) const override;
    QRect rect() const override;

private:
    int column_;
};

/// The screen-reader interface of a cell. A screen reader can make the cell the current cell.
class GridCellPart : public GridPart,
                     public QAccessibleTableCellInterface,
                     public QAccessibleActionInterface
{
public:
    GridCellPart(QTableView& grid, const QModelIndex& index) : GridPart(grid), index_(index) {}

    int row() const override { return index_.row(); }
    int column() const override { return index_.column(); }
    bool isValid() const override { return GridPart::isValid() && index_.isValid(); }
    QAccessible::Role role() const override { return QAccessible::Cell; }
    QAccessible::State state() const override;
    QString text(QAccessible::Text type) const override;
    QRect rect() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    bool isSelected() const override;
    QList<QAccessibleInterface*> columnHeaderCells() const override;
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return shownColumn(); }
    int rowIndex() const override { return row(); }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

    QStringList actionNames() const override { return {setFocusAction()}; }
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

private:
    QPersistentModelIndex index_;
};

} // namespace controls
