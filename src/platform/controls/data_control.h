#pragma once

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

#include <QStyle>
#include <QWidget>

#include <memory>

namespace controls {

/// Owns the recordset of a form and notifies the bound grids and combo boxes of its changes. It is
/// hidden by default. If a form shows it, it is a bar with buttons for the first, previous, next
/// and last row, named <name>_First and so on. At the first and last row the buttons do nothing.
/// Each press emits Validate once; errors of the button handlers open the run-time error box.
class DataControl : public QWidget, private dao::RecordsetObserver
{
    Q_OBJECT

public:
    explicit DataControl(const QString& name, QWidget* parent = nullptr);
    ~DataControl() override;

    /// Binds another recordset and releases the previous one. Does not emit Validate.
    void setRecordset(std::shared_ptr<dao::Recordset> recordset);
    bool hasRecordset() const { return recordset_ != nullptr; }
    /// Throws ObjectNotSet (91) if no recordset is bound.
    dao::Recordset& Recordset() const;
    /// Returns the recordset's database. Throws ObjectNotSet (91) if no recordset is bound.
    dao::Database& Database() const;

    /// Emits Validate and runs the query again. The row with the same key becomes current; if it
    /// was deleted, the row that took its position; if there was no current row, the first row.
    /// RecordCount then covers as many rows as before, or all rows if it covered all before. Throws
    /// ObjectNotSet (91) if no recordset is bound.
    void Refresh();

    /// Creates the bar when it is first shown, because most data controls stay hidden.
    void setVisible(bool visible) override;

signals:
    /// Emitted before the current row changes: by every Move of the recordset, a row change in a
    /// bound grid, Delete and Refresh. On MoveLast all rows have already been read.
    void Validate();

    /// Tells bound controls to read all rows again. The current row may have changed.
    void rowsReset();
    // The following four signals forward the recordset's observer notifications.
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
