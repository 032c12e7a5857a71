#pragma once

#include "platform/controls/db_grid_column.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/run_time_error.h"

#include <QAbstractTableModel>
#include <QMap>

#include <memory>
#include <optional>
#include <vector>

namespace controls {

/// The rows of a recordset as a grid shows them, read in pages when they are asked for; where the
/// grid is editable, a blank row behind them, and what has been typed into one row and not yet
/// written. A row that is being added has a blank row behind it already.
class DBGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;
    ~DBGridModel() override;

    void setColumns(const QList<DBGridColumn>& columns);
    const QList<DBGridColumn>& columns() const { return columns_; }
    void setEditable(bool editable);

    /// Shows the rows of another recordset, or the same one's anew; null for none. What was typed
    /// and not written is dropped. Raises what the engine raises.
    void bind(dao::Recordset* rows);
    int recordCount() const;
    /// Invalid for a row that stands in no store.
    dao::RowKey keyAt(int row) const;
    /// -1 where no such row is shown.
    int rowOf(const dao::RowKey& key) const;

    void addRow(const dao::RowKey& key);
    void updateRow(const dao::RowKey& key);
    void removeRow(const dao::RowKey& key);

    /// The row that holds something typed and not yet written; -1 where there is none.
    int editedRow() const;
    /// Writes the edited row. What the store refuses is raised; the store and what was typed stay
    /// as they are then.
    void writeEdit(dao::Recordset& rows);
    void dropEdit();
    /// Drops what was typed into one cell, and with the last of them the row's edit.
    void dropCell(const QModelIndex& index);

    /// Raises the failure that readFailed told of.
    void raiseReadFailure() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

signals:
    /// A page could not be read. The model shows nothing more until it is bound again.
    void readFailed() const;

private:
    struct Edit
    {
        int row = 0;
        bool isNew = false;
        QMap<int, QString> cells; ///< By column.
    };

    void resolveFields(const dao::Recordset* rows);
    bool isRead(int row) const;
    QString cellText(int row, int column) const;
    void startEdit(int row);
    void assignCells(dao::Recordset& rows) const;
    void rowChanged(int row);

    QList<DBGridColumn> columns_;
    std::vector<dao::FieldInfo> fields_;
    std::vector<int> ordinals_; ///< By column; -1 for a field that the table has not.
    std::unique_ptr<dao::RecordsetPages> pages_;
    bool editable_ = false;
    bool writing_ = false;
    std::optional<Edit> edit_;
    mutable std::optional<runtime::RunTimeError> failure_;
};

} // namespace controls
