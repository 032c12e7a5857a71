#pragma once

#include "tools/store/new_store.h"
#include "tools/store/store_copy.h"

namespace storetools {

struct MoveOutcome
{
    QStringList notes;      ///< What was left out.
    QStringList findings;   ///< What kept the store from being moved; nothing was changed then.
    StoreContents contents; ///< What both places hold, where there are no findings.
};

/// Copies the whole store, as it stands at one moment, to a place that holds none, and reads both
/// sides' rows to compare them. The target is complete or untouched.
///
/// Raises 3204 for a target that holds a store or one of its tables, and what opening, reading and
/// writing raise.
MoveOutcome moveStore(const Place& from, const Place& to, const RowsOfTable& progress);

/// A new embedded store that holds what the other one does, read back and not yet in its place.
struct MadeStore
{
    std::unique_ptr<NewStore> store;
    StoreContents contents;
};
MadeStore makeStoreOf(const StillStore& source, const QString& path, const RowsOfTable& progress);

} // namespace storetools
