#pragma once

#include <QAccessibleWidget>
#include <QHash>
#include <QPersistentModelIndex>

class QModelIndex;
class QTableView;

namespace controls {

/// The screen-reader interface of a grid. Its children are first the headers of the visible
/// columns, from left to right, and then the cells of these columns, row by row. Qt's own interface
/// of a table also contains the hidden columns and an empty header for each row. While the grid is
/// being destroyed, the interface has no children.
class GridInterface : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    explicit GridInterface(QTableView* grid);
    ~GridInterface() override;

    /// Returns the screen-reader interface of a cell, or nullptr if the column of the cell is
    /// hidden.
    QAccessibleInterface* cell(const QModelIndex& index) const;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override;
    int columnCount() const override { return static_cast<int>(columns().size()); }
    int rowCount() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int /*row*/) const override { return {}; }
    QList<QAccessibleInterface*> selectedCells() const override;
    int selectedCellCount() const override { return selectedRowCount() * columnCount(); }
    QList<int> selectedRows() const override;
    int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
    bool isRowSelected(int row) const override { return selectedRows().contains(row); }
    bool selectRow(int row) override;
    // The user can only select rows, and one row is always selected. Therefore columns cannot be
    // selected, and a row cannot be deselected.
    QList<int> selectedColumns() const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    bool isColumnSelected(int /*column*/) const override { return false; }
    bool selectColumn(int /*column*/) override { return false; }
    bool unselectRow(int /*row*/) override { return false; }
    bool unselectColumn(int /*column*/) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* event) override;

private:
    QTableView* view() const;
    QList<int> columns() const;
    QAccessibleInterface* header(int column) const;
    void forgetRemovedCells() const;

    // A screen-reader interface exists until its cell is removed or the grid is destroyed.
    mutable QHash<int, QAccessible::Id> headers_;
    mutable QHash<QPersistentModelIndex, QAccessible::Id> cells_;
};

/// Sends a screen-reader event for a cell. Does nothing if no screen reader is active or if the
/// column of the cell is hidden.
void announceCell(QTableView& grid, const QModelIndex& cell, QAccessible::Event type);

} // namespace controls
