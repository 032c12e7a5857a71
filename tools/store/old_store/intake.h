#pragma once

#include "tools/store/old_store/row_digest.h"
#include "tools/store/old_store/table_intake.h"

#include <functional>
#include <map>
#include <memory>

namespace storetools {

/// Receives the rows that an import has converted. Adds them to the tables of a new store, which
/// exist and are empty.
class RowSink
{
public:
    virtual ~RowSink() = default;
    virtual void add(const store::TableSchema& table, const NewRow& row) = 0;
};

/// The progress callback of an import. It is called for each row, with the name of the current step
/// and the number of rows that are done in this step.
using TakeOverProgress = std::function<void(const QString& what, qint64 rows)>;

/// Imports an old store row by row. After the first finding (an error that prevents the import), no
/// more rows are added to the new store. The remaining rows are only checked for further findings.
class Intake : public OldStoreVisitor
{
public:
    Intake(RowSink& sink, const TakeOverOptions& options, TakeOverProgress progress);

    const TakeOverReports& reports() const { return reports_; }
    /// Returns the digest of the rows that were added to this table of the new store. The digest is
    /// empty for a table that the old store lacks.
    const RowDigest& added(const store::TableSchema& table) { return added_[table.name]; }

    void opened(OldFormat format) override { format_ = format; }
    void foreignTable(const QString& name, bool linked) override;
    /// Starts the import of a table of the old store. Throws CorruptDatabase (3049) for a table
    /// that the store's schema does not contain, and for a table that the old store contains twice.
    void table(const OldTable& table) override;
    void row(const OldRow& row) override;
    void tableEnd() override;
    void end() override;

private:
    void add(const NewRow& row);

    RowSink& sink_;
    const TakeOverOptions& options_;
    TakeOverProgress progress_;
    TakeOverReports reports_;
    OldFormat format_ = OldFormat::Jet4;
    std::map<QString, RowDigest> added_;
    const store::TableSchema* schema_ = nullptr; ///< Schema of the table that is being imported.
    std::unique_ptr<TableIntake> table_;
    QVariant lastKey_;
};

} // namespace storetools
