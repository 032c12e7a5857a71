#pragma once

#include "platform/dao/table_copy.h"
#include "tools/store/checker.h"
#include "tools/store/place.h"

#include <functional>
#include <map>

namespace storetools {

/// Progress callback of a long command. It receives the current step and the number of rows so far.
using RowsOfTable = std::function<void(const QString& what, qint64 rows)>;

/// The contents of the tables of a store, by table name.
using StoreContents = std::map<QString, dao::TableContents>;

/// The identity of a copy. A copy that becomes a store of its own gets a new one. A backup, and a
/// store that is restored from it, keep the identity of the source.
enum class Identity { New, OfSource };

/// A consistent snapshot of a store. Stations keep working meanwhile. For an embedded store the
/// snapshot is a copy in the folder for temporary files.
class StillStore
{
public:
    /// Opens the store and takes the snapshot. Throws the errors of opening and copying the store.
    explicit StillStore(const Place& place);

    /// Returns the schema errors that prevent copying, one line for each missing or wrong table,
    /// field or index.
    const QStringList& findings() const { return findings_; }
    /// Returns one line for each table that does not belong to the store.
    const QStringList& notes() const { return notes_; }

    /// Checks the snapshot.
    CheckReport check() const;

    /// Creates the tables in a target that has none of them, within the target's
    /// transaction, copies the rows and gives the target an identity. Throws the errors of
    /// dao::copyTable.
    StoreContents copyTo(dao::Database& target, Identity identity,
                         const RowsOfTable& progress) const;

private:
    void examine();

    bool isOnServer_;
    ScratchFolder folder_;
    std::shared_ptr<dao::Database> database_;
    QStringList tables_; ///< The names of the store's own tables, in creation order.
    QStringList findings_;
    QStringList notes_;
};

/// Returns the names of the store's tables that the database has.
QStringList storeTablesIn(dao::Database& database);
/// Checks that the database has none of the store's tables. Throws DatabaseExists (3204) otherwise.
void requireNoStore(dao::Database& database);

/// Reads all copied rows again. Throws InternalError (51) if they differ from what was written.
void readBack(dao::Database& database, const StoreContents& written, const RowsOfTable& progress);

} // namespace storetools
