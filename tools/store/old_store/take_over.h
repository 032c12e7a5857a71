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
    QStringList notes; ///< Data that was skipped, filled in or truncated.
    /// Errors that prevented the import. If there are any, no store was created.
    QStringList findings;
    /// The tables of the new store with their row counts. The list is empty if the import failed.
    std::vector<TakenTable> tables;
};

/// Creates a new store from a store of the old format. The old store is opened read-only. The
/// target is a new file, or a server's database that has none of the store's tables. The target
/// becomes visible only when it is complete and its rows have been read back. Data that is missing
/// in old rows is reported as a note.
///
/// Throws DatabaseExists (3204) if the target already contains a store, DatabaseFileNotFound (3024)
/// or UnrecognizedFormat (3343) if there is no old store at the old path, CorruptDatabase (3049) if
/// the old store is damaged, and any error of opening and writing.
TakeOverOutcome takeOverStore(const QString& oldPath, const Place& target,
                              const TakeOverOptions& options, const TakeOverProgress& progress);

} // namespace storetools
