#pragma once

#include "tools/store/new_store.h"
#include "tools/store/store_copy.h"

namespace storetools {

struct MoveOutcome
{
    QStringList notes; ///< Tables of other programs, which were not copied.
    /// Errors that prevented the move; if there are any, nothing was changed.
    QStringList findings;
    /// The row counts and digests of the tables, which are the same in the source and the target;
    /// empty if there are findings.
    StoreContents contents;
};

/// Copies a consistent snapshot of the whole store to a place that holds no store, then reads the
/// rows of both sides and compares them. The target is either complete or unchanged.
///
/// Throws DatabaseExists (3204) for a target that holds a store or one of its tables, and any error
/// of opening, reading and writing.
MoveOutcome moveStore(const Place& from, const Place& to, const RowsOfTable& progress);

/// A new embedded store with the contents of another store. It has been read back but not yet moved
/// to its final path.
struct MadeStore
{
    std::unique_ptr<NewStore> store;
    StoreContents contents;
};
MadeStore makeStoreOf(const StillStore& source, const QString& path, Identity identity,
                      runtime::Readers readers, const RowsOfTable& progress);

} // namespace storetools
