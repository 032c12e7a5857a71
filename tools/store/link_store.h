#pragma once

#include "platform/dao/link.h"

#include <QString>

namespace storetools {

/// Whether what a link leads to has been found to be a store.
enum class LinkedTo {
    Store,
    NoStoreYet, ///< A database without any of a store's tables, to which one can be moved.
};

/// Tries the link and lays it at the path, in one step. A link that lies there is replaced; a store
/// or any other file is not. Raises 3204 for that, 3151 for a database that cannot be reached,
/// 3343 for values that cannot be in a link, 3051 where the folder cannot be written.
LinkedTo linkStore(const QString& path, const dao::Link& link);

} // namespace storetools
