#pragma once

#include <QPointer>
#include <QString>
#include <QTableView>

namespace dao {
class Recordset;
}

namespace controls {

class CaptionHeader;
class CellDelegate;
class DataControl;
class DBGridModel;

struct DBGridColumn
{
    QString caption;
    QString field;
    /// Relative width of a shown column; 0 hides it (the column exists all the same).
    int width = 0;
    /// Digits behind the decimal sign of a number, as "0.00" has 2; -1 for the general conversion.
    int decimals = -1;
};

/// A grid bound to a data control: it shows the rows of its recordset, pages them in as they come
/// into view, stands on the recordset's current row and moves the recordset when the user moves in
/// it.
///
/// Columns stand in their stored order from the left edge although the forms read from right to
/// left: the view's own direction is left-to-right, its cells' text right-aligned. The caption is a
/// band above the column headers. Shown columns share the width by their relative widths.
///
/// Rows that have been painted in the viewport, even in part, count as reached in the recordset,
/// and so do all rows before them (dao::Recordset::markReached). Rows that were never scrolled into
/// view do not count, so a long table costs no more to show than a short one.
///
/// Read-only unless setEditable is called; then it has a blank last row on which typing adds a
/// record, edits a cell in place and writes the row when it is left (or the grid is closed), and
/// deletes the selected row with the Delete key. What the store refuses is told in a box of the
/// grid's own, in Hebrew, and the row keeps what was typed until it is mended or Escape drops it.
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

    /// Writes a row that is being edited, and tells a refusal. True where nothing is left
    /// unwritten. Raises nothing.
    bool commitEdits();

    void keyboardSearch(const QString& search) override;

signals:
    /// A double-click on a row, which is then the current one.
    void DblClick();
    /// Enter in a read-only grid.
    void enterPressed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void setUpView();
    void fitRows();
    void shareWidth();
    void shareWidth(int room);
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
    bool editable_ = false;
    bool following_ = false; ///< The view is being brought to the recordset's row.
    bool moving_ = false;    ///< The recordset is being brought to the view's row.
    bool telling_ = false;
    QString refusal_;      ///< Not yet told.
    bool rowGone_ = false; ///< The edited row has been deleted by another station.
};

/// Font size 11 and black text.
void SetGridFont(DBGrid& grid);

} // namespace controls
