#pragma once

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

#include <QWidget>

#include <memory>

class QLabel;

namespace controls {

/// Holds one recordset for its form and tells the grids and combos bound to it what happens there.
/// Hidden by default; where a form shows it, it is a bar with buttons for the first, previous, next
/// and last row. Its Move buttons run guarded.
class DataControl : public QWidget, private dao::RecordsetObserver
{
    Q_OBJECT

public:
    explicit DataControl(const QString& name, QWidget* parent = nullptr);
    ~DataControl() override;

    /// Binds another recordset (the former one is let go). Does not fire Validate.
    void setRecordset(std::shared_ptr<dao::Recordset> recordset);
    bool hasRecordset() const { return recordset_ != nullptr; }
    /// Raises 91 while no recordset is bound.
    dao::Recordset& Recordset() const;
    /// The database of the recordset. Raises 91 while no recordset is bound.
    dao::Database& Database() const;

    /// Fires Validate, runs the query again, and stands on the row with the same key as before or
    /// on the one that has taken its place; on the first where there was no row before. For this it
    /// keeps no more rows "reached" than the requeried recordset itself counts.
    void Refresh();

signals:
    /// Before the current row changes: on every Move of the recordset, on a change of row in a
    /// bound grid, on Delete and on Refresh. A MoveLast has read to the end by then.
    void Validate();

    /// For bound controls: all rows are to be read anew.
    void rowsReset();
    void currentChanged();
    void rowAdded(const QVariant& key);
    void rowUpdated(const QVariant& key);
    void rowDeleted(const QVariant& key);

private:
    void currentAboutToChange() override;
    // The observer's other calls are passed on as the signals of like name.
    std::shared_ptr<dao::Recordset> recordset_;
};

} // namespace controls
