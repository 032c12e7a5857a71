#pragma once

#include "platform/controls/db_grid_column.h"
#include "platform/controls/row_remark.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTableView>

#include <utility>

class QFontMetricsF;

namespace dao {
class Recordset;
}

namespace controls {

class CaptionHeader;
class CellDelegate;
class DataControl;
class DBGridModel;

/// A grid bound to a data control. The grid shows the rows of the recordset and loads pages of rows
/// as they become visible. If the current row of the recordset changes, the grid moves to that row.
/// If the user moves to another row of the grid, the recordset moves to that row.
///
/// The first column is on the left, although the forms read right-to-left: the layout direction of
/// the view is left-to-right and its cells are right-aligned. The caption is a band above the
/// column headers. Visible columns share the width in proportion to their relative widths, but no
/// column is narrower than its header or than a number or date that is visible in it. If the grid
/// is too narrow for these columns, it scrolls horizontally. The rightmost column is visible when
/// the grid opens.
///
/// RecordCount of the recordset includes all rows up to the last row that has been painted, even in
/// part (dao::Recordset::markReached). Rows that were never scrolled into view are not counted, so
/// that a long table is shown as quickly as a short one.
///
/// In a read-only grid, Home and End move to the first and the last row.
///
/// Screen readers find only the visible columns (grid_interface.h). After the grid gets the focus,
/// screen readers announce the current cell.
///
/// The grid is read-only unless setEditable is called. An editable grid has a blank last row in
/// which typing adds a record, and its cells can be edited in place. The grid writes an edited row
/// when the user leaves the row or the grid closes. The Delete key deletes the selected row. If the
/// store refuses a change, a Hebrew message box shows the reason. The row then keeps the typed text
/// until the user corrects it or discards it with Escape.
class DBGrid : public QTableView
{
    Q_OBJECT
    Q_PROPERTY(QString caption READ caption WRITE setCaption)

public:
    explicit DBGrid(const QString& name, QWidget* parent = nullptr);
    ~DBGrid() override;

    void setColumns(const QList<DBGridColumn>& columns);
    void setDataSource(DataControl* source);
    QString caption() const;
    void setCaption(const QString& caption);
    void setEditable(bool editable);
    /// Marks each row for which `remark` returns a text. A marked row has a warning sign in the
    /// given column and the text as its tool tip. See DBGridModel::setRowRemark.
    void setRowRemark(const RowRemark& remark, int column);
    /// Enables the search by typing: typed letters move to the next row whose text in this column
    /// starts with these letters. The search may read all rows, so only grids with short tables may
    /// use it.
    void setSearchColumn(int column) { searchColumn_ = column; }

    /// Writes the row that is being edited. If the store refuses the row, a message box shows the
    /// reason. Returns true if no unwritten edit remains. Does not throw.
    bool commitEdits();

    void keyboardSearch(const QString& search) override;

signals:
    /// Emitted on a double-click on a row. The clicked row is then the current row.
    void DblClick();
    /// Emitted when Enter is pressed in a read-only grid. A held key emits the signal only once.
    void enterPressed();
    /// Emitted when Delete is pressed in a read-only grid. A held key emits the signal only once.
    void deletePressed();
    /// Emitted when the user opens the menu of the current row with the menu key or with a right
    /// click on the row. `place` is in screen coordinates.
    void menuRequested(const QPoint& place);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    void focusInEvent(QFocusEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void setUpView();
    void fitRows();
    void shareWidth();
    void shareWidth(int room);
    int neededWidth(const QModelIndex& cell, const QFontMetricsF& metrics) const;
    void measureShownFigures();
    int shownColumn() const;

    dao::Recordset* rows() const;
    void readRows();
    void showCurrent();
    void bringIntoSight();
    void markShownRows();
    void goTo(int row);
    void moveRecordset(int row);
    void takeAway(const QVariant& key);

    bool handleEditKey(const QKeyEvent& event);
    void flushEditor();
    bool leaveEditedRow(int nextRow);
    void moveUnlessHeld(int row);
    bool writeRow();
    void writeBeforeMove();
    void dropEdit();
    void deleteRow();
    void closeGap(int row, const QVariant& key);
    void focusMoved(const QWidget* from, const QWidget* to);
    void tellLater();
    void tellRefusal();

    CaptionHeader* header_;
    CellDelegate* delegate_;
    DBGridModel* model_;
    QPointer<DataControl> source_;
    QList<int> figureWidths_; ///< Per column, the width of the widest figure that was in view.
    /// The range of rows in which the widths of numbers and dates have been measured: its first row
    /// and the row after its last row. Both values are -1 if the rows must be measured again.
    std::pair<int, int> measuredRows_{-1, -1};
    int searchColumn_ = -1;
    QString typed_;
    QElapsedTimer sinceTyped_;
    bool editable_ = false;
    bool following_ = false; ///< True while the view moves to the recordset's current row.
    bool moving_ = false;    ///< True while the recordset moves to the view's current row.
    bool telling_ = false;
    QString refusal_;      ///< Text of a refusal that has not been shown yet.
    bool rowGone_ = false; ///< True if another station has deleted the edited row.
};

/// Font size 11 and black text.
void SetGridFont(DBGrid& grid);

} // namespace controls
