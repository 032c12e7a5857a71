#pragma once

#include "tools/store/new_store.h"
#include "tools/store/store_copy.h"

namespace storetools {

struct MoveOutcome
{
    QStringList notes; ///< Tables of other programs, which were not copied.
    /// Errors that prevented the move. If there are any, nothing was changed.
    QStringList findings;
    /// The number of rows and the digest (a hash) of each table. They are the same in the source
    /// and the target. The map is empty if nothing was moved.
    StoreContents contents;
};

/// Copies a whole store, as it is at one moment, to a target that contains no store. Then reads the
/// rows of the target back and compares them with the copied rows. The source keeps its rows. If
/// copying or comparing fails, the target remains unchanged.
///
/// Throws DatabaseExists (3204) for a target that contains a store or one of a store's tables, and
/// any error of opening, reading and writing.
MoveOutcome moveStore(const Place& from, const Place& to, const RowsOfTable& progress);

/// A new embedded store with the contents of another store. Its rows have been read back, but its
/// file has not been moved to the final path yet.
struct MadeStore
{
    std::unique_ptr<NewStore> store;
    StoreContents contents;
};
MadeStore makeStoreOf(const StillStore& source, const QString& path, Identity identity,
                      runtime::Readers readers, const RowsOfTable& progress);

} // namespace storetools
