#pragma once

#include "platform/controls/db_grid_column.h"
#include "platform/controls/row_remark.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/run_time_error.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>
#include <QMap>

#include <memory>
#include <optional>
#include <vector>

namespace controls {

/// The model of a grid. It contains the rows of a recordset and loads them in pages on demand. An
/// editable model adds a blank row at the end and keeps the unwritten text of one edited row. While
/// a row is being added, another blank row follows this row.
class DBGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;
    ~DBGridModel() override;

    void setColumns(const QList<DBGridColumn>& columns);
    const QList<DBGridColumn>& columns() const { return columns_; }
    void setEditable(bool editable);
    /// Sets the function that returns the remark about a row, such as a warning. A row with a
    /// remark shows the icon `sign` in the given column and the remark as its tool tip.
    void setRowRemark(const RowRemark& remark, int column, const QIcon& sign);

    /// Binds a recordset and discards an unwritten edit. The recordset may be the one that is
    /// already bound, or nullptr for no recordset. Throws any error of reading.
    void bind(dao::Recordset* rows);
    int recordCount() const;
    /// Returns the key of a row, or an invalid key if the row is not in the store.
    dao::RowKey keyAt(int row) const;
    /// Returns the index of the row with this key, or -1 if the model has no such row.
    int rowOf(const dao::RowKey& key) const;

    void addRow(const dao::RowKey& key);
    void updateRow(const dao::RowKey& key);
    void removeRow(const dao::RowKey& key);

    /// Returns the index of the row with unwritten text, or -1 if there is none.
    int editedRow() const;
    /// Writes the edited row to the store. Throws an error if the store refuses the row. After an
    /// error, the store and the unwritten text are unchanged.
    void writeEdit(dao::Recordset& rows);
    void dropEdit();
    /// Discards the unwritten text of one cell. If no other cell of the row has unwritten text, the
    /// row is no longer being edited.
    void dropCell(const QModelIndex& index);

    /// Throws the stored error if a page of rows could not be read (see readFailed).
    void raiseReadFailure() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

signals:
    /// Emitted when a page could not be read. The model then shows no further rows until a
    /// recordset is bound again.
    void readFailed() const;

private:
    struct Edit
    {
        int row = 0;
        bool isNew = false;
        QMap<int, QString> cells; ///< Unwritten texts by column.
    };

    void resolveFields(const dao::Recordset* rows);
    bool isRead(int row) const;
    QString cellText(int row, int column) const;
    QString remarkOn(int row) const;
    QString newRemarkOn(int row) const;
    void startEdit(int row);
    void assignCells(dao::Recordset& rows) const;
    void rowChanged(int row);

    QList<DBGridColumn> columns_;
    std::vector<dao::FieldInfo> fields_;
    std::vector<int>
        ordinals_; ///< Field positions by column; -1 for a field that the table does not have.
    std::unique_ptr<dao::RecordsetPages> pages_;
    bool editable_ = false;
    bool writing_ = false;
    std::optional<Edit> edit_;
    RowRemark remark_;
    mutable QHash<int, QString> remarks_; ///< By row, until a row changes or a page is read.
    int signColumn_ = -1;
    QIcon sign_;
    mutable std::optional<runtime::RunTimeError> failure_;
};

} // namespace controls
