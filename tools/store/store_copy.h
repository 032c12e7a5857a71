#pragma once

#include "platform/dao/table_copy.h"
#include "tools/store/place.h"

#include <functional>
#include <map>

namespace storetools {

/// Is told how far a long command has come.
using RowsOfTable = std::function<void(const QString& what, qint64 rows)>;

/// What the tables of a store hold, by name.
using StoreContents = std::map<QString, dao::TableContents>;

/// A store as it stands at one moment. Stations go on working: of an embedded store the moment is
/// kept as a copy in the folder for temporary files.
class StillStore
{
public:
    /// Raises what opening and copying raise.
    explicit StillStore(const Place& place);

    /// What keeps the store from being copied: a table, field or index that is missing or another
    /// than it should be. A line for each.
    const QStringList& findings() const { return findings_; }
    /// The tables that are none of the store's, a line for each.
    const QStringList& notes() const { return notes_; }

    /// What checkForCopying finds.
    QStringList check() const;

    /// Makes the tables in a store that has none of them, within its transaction. Raises as
    /// dao::copyTable does.
    StoreContents copyTo(dao::Database& target, const RowsOfTable& progress) const;

private:
    void examine();

    bool isOnServer_;
    QTemporaryDir folder_;
    std::shared_ptr<dao::Database> database_;
    QStringList tables_; ///< The store's own, in the order in which they were made.
    QStringList findings_;
    QStringList notes_;
};

/// The names of those of the eleven tables that a store has, and of the program's own.
QStringList storeTablesIn(dao::Database& database);
/// Raises 3204 for a database that has any of them.
void requireNoStore(dao::Database& database);

/// Reads all that was copied once more. Raises 51 where it is not what was written.
void readBack(dao::Database& database, const StoreContents& written, const RowsOfTable& progress);

} // namespace storetools
