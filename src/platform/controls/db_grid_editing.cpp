// The editing functions of DBGrid.

#include "platform/controls/cell_delegate.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_grid.h"
#include "platform/controls/db_grid_model.h"
#include "platform/controls/refusal.h"
#include "platform/runtime/guard.h"
#include "platform/runtime/message_box.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace controls {

using runtime::RunTimeError;

void DBGrid::setEditable(bool editable)
{
    if (editable == editable_)
        return;
    editable_ = editable;
    setEditTriggers(editable
                        ? QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                              QAbstractItemView::AnyKeyPressed
                        : QAbstractItemView::NoEditTriggers);
    {
        const QScopedValueRollback following(following_, true);
        model_->setEditable(editable);
    }
    showCurrent();
    disconnect(qApp, &QApplication::focusChanged, this, nullptr);
    if (editable)
        runtime::on(qApp, &QApplication::focusChanged, this,
                    [this](QWidget* from, QWidget* to) { focusMoved(from, to); });
}

bool DBGrid::commitEdits()
{
    bool written = true;
    runtime::guarded([this, &written] {
        flushEditor();
        if (QLineEdit* editor = delegate_->editor())
            closeEditor(editor, QAbstractItemDelegate::NoHint);
        written = writeRow();
        tellRefusal();
    });
    return written;
}

/// Copies the text of an open cell editor to the edited row of the model.
void DBGrid::flushEditor()
{
    if (QLineEdit* editor = delegate_->editor())
        commitData(editor);
}

/// Writes the edited row to the store. If the store refuses the row, stores the reason for a
/// message box (see tellRefusal) and returns false.
bool DBGrid::writeRow()
{
    if (model_->editedRow() < 0 || rows() == nullptr)
        return true;
    // Writing a row may move the recordset to another row. While `moving_` is true, the view does
    // not follow such a move.
    const QScopedValueRollback moving(moving_, true);
    try {
        model_->writeEdit(*rows());
        return true;
    } catch (const RunTimeError& error) {
        rowGone_ = error.number() == runtime::RecordDeleted;
        refusal_ = writeRefusal(error);
        return false;
    }
}

/// Writes the edited row to the store before the recordset moves to another row. Does nothing if
/// this grid itself causes the move.
void DBGrid::writeBeforeMove()
{
    if (moving_)
        return;
    flushEditor();
    if (!writeRow())
        tellLater();
}

bool DBGrid::leaveEditedRow(int nextRow)
{
    if (model_->editedRow() == nextRow || writeRow())
        return true;
    tellLater();
    return false;
}

/// Moves the recordset to a row. If another station has locked the store, the grid stays on its
/// current row and shows a message instead of the run-time error box. The run-time error box would
/// end the program, and the unwritten text of all grids would be lost.
void DBGrid::moveUnlessHeld(int row)
{
    try {
        moveRecordset(row);
    } catch (const RunTimeError& error) {
        if (error.number() != runtime::Locked)
            throw;
        refusal_ = readRefusal(error);
        showCurrent();
        tellLater();
    }
}

/// Queues the message that the store has refused to read or write a row. No message box may open
/// while Qt handles the key or click that caused the refusal.
void DBGrid::tellLater()
{
    QMetaObject::invokeMethod(
        this, [this] { runtime::guarded([this] { tellRefusal(); }); }, Qt::QueuedConnection);
}

/// Shows the pending message that the store has refused to read, write or delete a row. If the user
/// is editing a row, first makes this row the current row.
void DBGrid::tellRefusal()
{
    if (refusal_.isEmpty() || telling_)
        return;
    const QString text = std::exchange(refusal_, {});
    const QPointer<DBGrid> self = this;
    telling_ = true;
    if (const int row = model_->editedRow(); row >= 0) {
        const QScopedValueRollback following(following_, true);
        goTo(row);
        setFocus();
    }
    runtime::MsgBox(text, runtime::refusalFlags);
    if (self)
        telling_ = false;
}

QModelIndex DBGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    // The text of an open cell editor is first copied to the edited row of the model. A new row
    // with text in a cell gets a blank row below it, to which the cursor may move.
    flushEditor();
    const int rowCount = model_->rowCount();
    if (!editable_ && rowCount > 0 && (action == MoveHome || action == MoveEnd))
        return model_->index(action == MoveHome ? 0 : rowCount - 1, shownColumn());
    return QTableView::moveCursor(action, modifiers);
}

void DBGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    const QPersistentModelIndex cell = currentIndex();
    const bool leavesByTab = hint == QAbstractItemDelegate::EditNextItem ||
                             hint == QAbstractItemDelegate::EditPreviousItem;
    QTableView::closeEditor(editor, leavesByTab ? QAbstractItemDelegate::NoHint : hint);
    if (hint == QAbstractItemDelegate::RevertModelCache)
        model_->dropCell(cell);
    if (leavesByTab)
        focusNextPrevChild(hint == QAbstractItemDelegate::EditNextItem);
}

bool DBGrid::handleEditKey(const QKeyEvent& event)
{
    if (delegate_->editor() != nullptr)
        return false;
    if (event.key() == Qt::Key_Escape && model_->editedRow() >= 0) {
        runtime::guarded([this] { dropEdit(); });
        return true;
    }
    if (event.key() == Qt::Key_Delete && currentIndex().isValid()) {
        runtime::guarded([this] { deleteRow(); });
        return true;
    }
    return false;
}

void DBGrid::dropEdit()
{
    const int row = model_->editedRow();
    {
        const QScopedValueRollback following(following_, true);
        model_->dropEdit();
    }
    if (std::exchange(rowGone_, false))
        closeGap(row, model_->keyAt(row));
}

void DBGrid::deleteRow()
{
    dropEdit();
    const int row = currentIndex().row();
    const dao::RowKey key = model_->keyAt(row);
    if (!key.isValid() || rows() == nullptr)
        return;
    try {
        moveRecordset(row);
        rows()->Delete();
    } catch (const RunTimeError& error) {
        refusal_ = deleteRefusal(error);
        tellRefusal();
        if (error.number() != runtime::RecordDeleted)
            return;
    }
    closeGap(row, key);
}

/// Removes a row that no longer exists in the store from the view. The row that is then at its
/// position becomes current.
void DBGrid::closeGap(int row, const QVariant& key)
{
    takeAway(key);
    goTo(std::clamp(row, 0, std::max(model_->recordCount() - 1, 0)));
}

void DBGrid::focusMoved(const QWidget* from, const QWidget* to)
{
    const auto isInside = [this](const QWidget* widget) {
        return widget == this || isAncestorOf(widget);
    };
    if (telling_ || from == nullptr || to == nullptr || !isInside(from) || isInside(to))
        return;
    if (!writeRow())
        tellLater();
}

} // namespace controls
