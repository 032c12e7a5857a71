#pragma once

#include "platform/dao/engine/link.h"

#include <QString>

namespace storetools {

/// The result of checking the target of a link.
enum class LinkedTo {
    Store,
    NoStoreYet, ///< The database has none of the store's tables. A store can be moved to it.
};

/// Selects whether a server that may lose committed rows is refused or accepted.
enum class Hazards { Refused, Accepted };

/// Checks the target of a link and writes the link file at this path atomically. If the target is a
/// database, it must be reachable; if the target is a file, it must be a store. Replaces an
/// existing link file, but never a store or another file.
///
/// Throws DatabaseExists (3204) if the path belongs to a store or another file that is no link,
/// ConnectionFailed (3151) if the database cannot be reached, DatabaseFileNotFound (3024) if the
/// target file is missing, UnrecognizedFormat (3343) if the target file is no store or if `link`
/// contains an invalid value such as an unknown TLS mode, InvalidOperation (3219) for a server that
/// may lose committed rows, and PermissionDenied (3051) if the folder of the link file is not
/// writable.
LinkedTo linkStore(const QString& path, const dao::Link& link, Hazards hazards);

} // namespace storetools
