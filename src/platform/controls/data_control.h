#pragma once

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

#include <QStyle>
#include <QWidget>

#include <memory>

namespace controls {

/// Owns a recordset and reports its changes to the grids and combo boxes that are bound to this
/// data control. The data control is hidden by default. If a form shows it, it is a bar with
/// buttons for the first, previous, next and last row. The objectNames of the buttons are
/// <name>_First and so on. A step beyond the first or the last row does not change the current row.
/// Each button press emits the signal Validate once. An error in a button's handler opens the
/// run-time error box.
class DataControl : public QWidget, private dao::RecordsetObserver
{
    Q_OBJECT

public:
    explicit DataControl(const QString& name, QWidget* parent = nullptr);
    ~DataControl() override;

    /// Binds another recordset and releases the previous recordset. Does not emit Validate.
    void setRecordset(std::shared_ptr<dao::Recordset> recordset);
    bool hasRecordset() const { return recordset_ != nullptr; }
    /// Returns the bound recordset. Throws ObjectNotSet (91) if no recordset is bound.
    dao::Recordset& Recordset() const;
    /// Returns the database of the bound recordset. Throws ObjectNotSet (91) if no recordset is
    /// bound.
    dao::Database& Database() const;

    /// Emits Validate and runs the query again. Afterwards the row with the same key as before is
    /// the current row. If that row was deleted, the row that now has its row number is the current
    /// row, or the last row if there are fewer rows. If there was no current row, the first row is
    /// the current row. RecordCount includes as many rows as before, or all rows if it included all
    /// rows before. Throws ObjectNotSet (91) if no recordset is bound.
    void Refresh();

    /// Creates the bar of buttons when the data control is first shown, because most data controls
    /// stay hidden.
    void setVisible(bool visible) override;

signals:
    /// Emitted before the current row changes: by every Move of the recordset, by a row change in a
    /// bound grid, by Delete and by Refresh. When MoveLast emits the signal, RecordCount already
    /// includes all rows.
    void Validate();

    /// Emitted when bound controls must read all rows again. The current row may have changed.
    void rowsReset();
    // The following four signals forward the notifications of the recordset to bound controls.
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
