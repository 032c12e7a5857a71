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
    /// Errors that prevented the import. No store was created if there are any.
    QStringList findings;
    /// The tables and row counts of the new store; empty if the import failed.
    std::vector<TakenTable> tables;
};

/// Creates a new store from an old-format store, which is opened read-only. The target is a new
/// file, or a server's database that has none of the store's tables. The target becomes visible
/// only after it is complete and its rows have been read back. Missing data of old rows is reported
/// as a note.
///
/// Throws DatabaseExists (3204) if the target already holds a store, DatabaseFileNotFound (3024) or
/// UnrecognizedFormat (3343) if the old path is not an old store, CorruptDatabase (3049) if it is
/// damaged, and any error of opening and writing.
TakeOverOutcome takeOverStore(const QString& oldPath, const Place& target,
                              const TakeOverOptions& options, const TakeOverProgress& progress);

} // namespace storetools
