#pragma once

#include "platform/dao/table_copy.h"
#include "tools/store/checker.h"
#include "tools/store/place.h"

#include <functional>
#include <map>

namespace storetools {

/// The progress callback of a long command. It receives the name of the current step and the number
/// of rows that are done in this step.
using RowsOfTable = std::function<void(const QString& what, qint64 rows)>;

/// The row count and the digest of each table of a store, by table name.
using StoreContents = std::map<QString, dao::TableContents>;

/// Selects the identity of a copy. A copy that becomes a store of its own gets a new identity. A
/// backup, and a store that is restored from a backup, keep the identity of the source.
enum class Identity { New, OfSource };

/// A consistent snapshot of a store. Stations may keep working with the store. The snapshot of an
/// embedded store is a copy in the folder for temporary files.
class StillStore
{
public:
    /// Opens the store and takes a snapshot of it. Throws the errors of opening and copying the
    /// store.
    explicit StillStore(const Place& place);

    /// Returns one line for each table, field and index of the store that is missing or wrong.
    /// These findings prevent copying.
    const QStringList& findings() const { return findings_; }
    /// Returns one line for each table that is not copied, because it does not belong to the store.
    const QStringList& notes() const { return notes_; }

    /// Checks the snapshot.
    CheckReport check() const;

    /// Creates the store's tables in a target database that has none of them, copies the rows and
    /// gives the target an identity. The caller must have opened a transaction in the target.
    /// Throws the errors of dao::copyTable.
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

/// Returns the names of the database's tables that belong to a store: those that store::schema()
/// defines, and the program's own tables ("zomrel_...").
QStringList storeTablesIn(dao::Database& database);
/// Checks that the database has none of the store's tables. Throws DatabaseExists (3204) otherwise.
void requireNoStore(dao::Database& database);

/// Reads all rows of a copied store. Throws InternalError (51) if they differ from `written`, the
/// row counts and digests of the rows that were written.
void readBack(dao::Database& database, const StoreContents& written, const RowsOfTable& progress);

} // namespace storetools
