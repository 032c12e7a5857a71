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

/// A grid bound to a data control. It shows the rows of the recordset and loads pages of rows as
/// they become visible. Its current row follows the recordset's current row, and the recordset
/// follows when the user moves in the grid.
///
/// Columns are placed in their stored order from the left, although the forms read right-to-left:
/// the layout direction of the view is left-to-right and its cells are right-aligned. The caption
/// is a band above the column headers. Visible columns share the width in proportion to their
/// relative widths, but no column is narrower than its header or than a figure that is in view. If
/// the grid is too narrow for that, it scrolls horizontally. It opens with its rightmost column in
/// view.
///
/// A row counts as reached in the recordset if it or a later row has been painted in the viewport,
/// even in part (dao::Recordset::markReached). Rows that were never scrolled into view do not
/// count, so that a long table is as fast to show as a short one.
///
/// In a read-only grid, Home and End move to the first and the last row.
///
/// Screen readers see only the visible columns (grid_interface.h), and hear the current cell
/// after the grid has got the focus.
///
/// The grid is read-only unless setEditable is called. An editable grid has a blank last row in
/// which typing adds a record, and cells that can be edited in place. It writes an edited row when
/// the user leaves the row or the grid closes. The Delete key deletes the selected row. If the
/// store refuses a change, a Hebrew message box says so, and the row keeps the typed text until the
/// user corrects it or discards it with Escape.
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
    /// Marks the rows for which the function returns a text: a warning sign in one column, and the
    /// text as tool tip. See DBGridModel::setRowRemark.
    void setRowRemark(const RowRemark& remark, int column);
    /// Lets typed letters move to the next row whose text in this column begins with them. Use this
    /// only for short tables, because the search may read all rows.
    void setSearchColumn(int column) { searchColumn_ = column; }

    /// Writes the row that is being edited and reports a refusal in a message box. Returns true if
    /// no unwritten edit remains. Does not throw.
    bool commitEdits();

    void keyboardSearch(const QString& search) override;

signals:
    /// Emitted on a double-click on a row, which is then the current row.
    void DblClick();
    /// Emitted on Enter in a read-only grid, once if the key is held down.
    void enterPressed();
    /// Emitted on Delete in a read-only grid, once if the key is held down.
    void deletePressed();
    /// Emitted when the user asks for the menu of the current row, by the menu key or by a right
    /// click on the row. The place is in the coordinates of the screen.
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
    /// The first row whose figures were measured and the row after the last one. Invalid after a
    /// change.
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
