#pragma once

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

#include <QStyle>
#include <QWidget>

#include <memory>

namespace controls {

/// Holds one recordset for its form and tells the grids and combos bound to it what happens there.
/// Hidden by default; where a form shows it, it is a bar with buttons for the first, previous, next
/// and last row, named <name>_First and so on. Its Move buttons run guarded and stay where there is
/// no further row; each press fires Validate once.
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
    /// on the one that has taken its place; on the first where there was no row before. RecordCount
    /// then counts as many rows as before, and all rows if it counted all before.
    void Refresh();

    /// Most data controls are never seen: the bar is made when it is first to be shown.
    void setVisible(bool visible) override;

signals:
    /// Before the current row changes: on every Move of the recordset, on a change of row in a
    /// bound grid, on Delete and on Refresh. A MoveLast has read to the end by then.
    void Validate();

    /// For bound controls: all rows are to be read anew, and the current row may be another.
    void rowsReset();
    // These four are what the recordset tells its observer, passed on.
    void currentChanged() override;
    void rowAdded(const dao::RowKey& key) override;
    void rowUpdated(const dao::RowKey& key) override;
    void rowDeleted(const dao::RowKey& key) override;

private:
    enum class Step { First, Previous, Next, Last };

    void currentAboutToChange() override;
    void buildBar();
    void addButton(const QString& name, const QString& text, QStyle::StandardPixmap icon,
                   Step step);
    void move(Step step);
    static void stepInside(dao::Recordset& rows, Step step);

    std::shared_ptr<dao::Recordset> recordset_;
};

} // namespace controls
