#include "platform/controls/db_grid_model.h"

#include "platform/controls/field_text.h"
#include "platform/dao/engine/field_search.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace controls {

using runtime::RunTimeError;

DBGridModel::~DBGridModel() = default;

void DBGridModel::setColumns(const QList<DBGridColumn>& columns)
{
    beginResetModel();
    columns_ = columns;
    resolveFields(nullptr);
    endResetModel();
}

void DBGridModel::setEditable(bool editable)
{
    beginResetModel();
    editable_ = editable;
    edit_.reset();
    endResetModel();
}

void DBGridModel::bind(dao::Recordset* rows)
{
    std::unique_ptr<dao::RecordsetPages> pages;
    if (rows != nullptr)
        pages = rows->pages();
    beginResetModel();
    pages_ = std::move(pages);
    remarks_.clear();
    edit_.reset();
    failure_.reset();
    resolveFields(rows);
    endResetModel();
}

/// Finds the field that each column of the grid shows. If no recordset is bound, uses the fields of
/// the recordset that was bound last.
void DBGridModel::resolveFields(const dao::Recordset* rows)
{
    if (rows != nullptr)
        fields_ = rows->fieldInfos();
    ordinals_.clear();
    for (const DBGridColumn& each : columns_)
        ordinals_.push_back(dao::ordinalOf(fields_, each.field));
}

void DBGridModel::setRowRemark(const RowRemark& remark, int column, const QIcon& sign)
{
    remark_ = remark;
    remarks_.clear();
    signColumn_ = column;
    sign_ = sign;
}

int DBGridModel::recordCount() const
{
    return pages_ ? pages_->rowCount() : 0;
}

dao::RowKey DBGridModel::keyAt(int row) const
{
    return row >= 0 && row < recordCount() ? pages_->keyAt(row) : dao::RowKey();
}

int DBGridModel::rowOf(const dao::RowKey& key) const
{
    return pages_ && key.isValid() ? pages_->rowOf(key) : -1;
}

void DBGridModel::addRow(const dao::RowKey& key)
{
    if (!pages_)
        return;
    remarks_.clear();
    if (writing_ && edit_ && edit_->isNew) {
        // The view already contains the row that has been added to the store, because the user
        // typed it in this grid. Therefore no row is inserted into the view.
        pages_->appendRow(key);
        edit_->isNew = false;
        return;
    }
    beginInsertRows({}, recordCount(), recordCount());
    pages_->appendRow(key);
    if (edit_ && edit_->isNew)
        ++edit_->row;
    endInsertRows();
}

void DBGridModel::updateRow(const dao::RowKey& key)
{
    const int row = rowOf(key);
    if (row < 0)
        return;
    pages_->forget(row);
    remarks_.clear();
    rowChanged(row);
}

void DBGridModel::removeRow(const dao::RowKey& key)
{
    const int row = rowOf(key);
    if (row < 0)
        return;
    beginRemoveRows({}, row, row);
    pages_->removeRow(row);
    remarks_.clear();
    if (edit_ && edit_->row == row)
        edit_.reset();
    else if (edit_ && edit_->row > row)
        --edit_->row;
    endRemoveRows();
}

int DBGridModel::editedRow() const
{
    return edit_ ? edit_->row : -1;
}

void DBGridModel::writeEdit(dao::Recordset& rows)
{
    if (!edit_)
        return;
    const QScopedValueRollback writing(writing_, true);
    if (edit_->isNew) {
        rows.AddNew();
    } else {
        const dao::RowKey key = keyAt(edit_->row);
        if (rows.currentKey() != key && !rows.moveToKey(key))
            throw RunTimeError(runtime::RecordDeleted);
        rows.Edit();
    }
    try {
        assignCells(rows);
        rows.Update();
    } catch (const RunTimeError&) {
        rows.CancelUpdate();
        throw;
    }
    const int row = edit_->row;
    edit_.reset();
    rowChanged(row);
}

void DBGridModel::assignCells(dao::Recordset& rows) const
{
    for (auto cell = edit_->cells.cbegin(); cell != edit_->cells.cend(); ++cell)
        rows.Fields(ordinals_[static_cast<std::size_t>(cell.key())]).SetValue(cell.value());
}

void DBGridModel::dropEdit()
{
    if (!edit_)
        return;
    const Edit dropped = *edit_;
    if (dropped.isNew) {
        // The discarded row was not stored yet. It becomes the blank last row again, so the blank
        // row below it is removed.
        beginRemoveRows({}, dropped.row + 1, dropped.row + 1);
        edit_.reset();
        endRemoveRows();
    } else {
        edit_.reset();
        pages_->forget(dropped.row);
    }
    rowChanged(dropped.row);
}

void DBGridModel::dropCell(const QModelIndex& index)
{
    if (!edit_ || edit_->row != index.row() || edit_->cells.remove(index.column()) == 0)
        return;
    if (edit_->cells.isEmpty())
        dropEdit();
    else
        rowChanged(index.row());
}

void DBGridModel::raiseReadFailure() const
{
    if (failure_)
        throw RunTimeError(*failure_);
}

int DBGridModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid())
        return 0;
    const int blank = editable_ && pages_ ? 1 : 0;
    const int added = edit_ && edit_->isNew ? 1 : 0;
    return recordCount() + added + blank;
}

int DBGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant DBGridModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::TextAlignmentRole)
        return (Qt::AlignRight | Qt::AlignVCenter).toInt();
    if (role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole)
        return remarkOn(index.row());
    if (role == Qt::DecorationRole && index.column() == signColumn_)
        return remarkOn(index.row()).isEmpty() ? QVariant() : QVariant(sign_);
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    return cellText(index.row(), index.column());
}

QString DBGridModel::cellText(int row, int column) const
{
    if (edit_ && edit_->row == row && edit_->cells.contains(column))
        return edit_->cells[column];
    const int ordinal = ordinals_[static_cast<std::size_t>(column)];
    if (ordinal < 0 || row >= recordCount() || !isRead(row))
        return {};
    const QVariant value = pages_->value(row, ordinal);
    try {
        return fieldText(value, columns_[column].decimals);
    } catch (const RunTimeError&) {
        return value.toString(); // No field of the store has this type.
    }
}

QString DBGridModel::remarkOn(int row) const
{
    if (!remark_.text || row >= recordCount())
        return {};
    // The remark is created before it is inserted into the cache. Creating it may load a page of
    // rows, which clears the cache.
    if (const auto known = remarks_.constFind(row); known != remarks_.constEnd())
        return *known;
    QString remark = newRemarkOn(row);
    remarks_.insert(row, remark);
    return remark;
}

QString DBGridModel::newRemarkOn(int row) const
{
    const int end = std::min(recordCount(), row + remark_.reach + 1);
    for (int each = std::max(0, row - remark_.reach); each < end; ++each) {
        if (!pages_->isLoaded(each) && !isRead(each))
            return {};
    }
    return remark_.text(*pages_, row);
}

/// Loads the page that contains the row if the page is not loaded yet. Does not throw, because Qt
/// calls this function during layout and painting. After an error, returns false, stores the error
/// and emits readFailed.
bool DBGridModel::isRead(int row) const
{
    if (failure_)
        return false;
    try {
        if (!pages_->isLoaded(row)) {
            remarks_.clear();
            pages_->load(row);
        }
        return true;
    } catch (const RunTimeError& error) {
        failure_ = error;
    } catch (const std::exception& error) {
        failure_.emplace(runtime::InternalError, QString::fromUtf8(error.what()));
    }
    emit readFailed();
    return false;
}

QVariant DBGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columns_.size())
        return {};
    return role == Qt::DisplayRole ? QVariant(columns_[section].caption) : QVariant();
}

Qt::ItemFlags DBGridModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags usual = QAbstractTableModel::flags(index);
    if (!editable_ || !index.isValid())
        return usual;
    const int ordinal = ordinals_[static_cast<std::size_t>(index.column())];
    const bool given = ordinal < 0 || fields_[static_cast<std::size_t>(ordinal)].counter;
    return given ? usual : usual | Qt::ItemIsEditable;
}

bool DBGridModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !flags(index).testFlag(Qt::ItemIsEditable))
        return false;
    const QString text = value.toString();
    if (text == cellText(index.row(), index.column()))
        return true;
    if (edit_ && edit_->row != index.row())
        return false;
    if (!edit_)
        startEdit(index.row());
    edit_->cells.insert(index.column(), text);
    emit dataChanged(index, index);
    return true;
}

void DBGridModel::startEdit(int row)
{
    if (row < recordCount()) {
        edit_ = Edit{row, false, {}};
        return;
    }
    beginInsertRows({}, row + 1, row + 1);
    edit_ = Edit{row, true, {}};
    endInsertRows();
}

void DBGridModel::rowChanged(int row)
{
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

} // namespace controls
