#pragma once

#include "tools/store/old_store/row_digest.h"
#include "tools/store/old_store/table_intake.h"

#include <functional>
#include <map>
#include <memory>

namespace storetools {

/// Where the rows of a new store go. Its tables are there and empty.
class RowSink
{
public:
    virtual ~RowSink() = default;
    virtual void add(const store::TableSchema& table, const NewRow& row) = 0;
};

/// Is told at each row what is going on and how many rows it has come through.
using TakeOverProgress = std::function<void(const QString& what, qint64 rows)>;

/// Takes an old store in, row by row. From the first finding on nothing is added to the sink any
/// more; the rest is looked through for further findings.
class Intake : public OldStoreVisitor
{
public:
    Intake(RowSink& sink, const TakeOverOptions& options, TakeOverProgress progress);

    const TakeOverReports& reports() const { return reports_; }
    /// What was added to each table of the store; to one that was missing, nothing.
    const RowDigest& added(const store::TableSchema& table) { return added_[table.name]; }

    void opened(OldFormat format) override { format_ = format; }
    void foreignTable(const QString& name, bool linked) override;
    /// Raises 3049 for a table that was told before.
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
    const store::TableSchema* schema_ = nullptr; ///< Of the table that is being taken in.
    std::unique_ptr<TableIntake> table_;
    QVariant lastKey_;
};

} // namespace storetools
