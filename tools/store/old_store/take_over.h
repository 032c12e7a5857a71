#pragma once

#include "tools/store/old_store/intake.h"

namespace storetools {

class Place;

struct TakenTable
{
    QString name;
    qint64 rows = 0;
};

struct TakeOverOutcome
{
    QStringList notes;              ///< What was left out, filled in or cut.
    QStringList findings;           ///< What kept the store from being taken over; none was made.
    std::vector<TakenTable> tables; ///< What the new store holds, where there is one.
};

/// Makes a new store of an old-format one, which is opened for reading only: a file, or the tables
/// in a server's database that has none of them. The file gets its name, the database its tables,
/// when the store is complete and was read back. What the old rows lack is a note.
///
/// Raises 3204 where the target holds a store already, 3024 and 3343 where the old path is no such
/// store, 3049 where it is damaged, and what opening and writing raise.
TakeOverOutcome takeOverStore(const QString& oldPath, const Place& target,
                              const TakeOverOptions& options, const TakeOverProgress& progress);

} // namespace storetools
