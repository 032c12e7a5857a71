#pragma once

#include "platform/dao/engine/link.h"

#include <QString>

namespace storetools {

/// The result of checking the place that a link names.
enum class LinkedTo {
    Store,
    NoStoreYet, ///< The database has none of the store's tables. A store can be moved to it.
};

/// Whether a server is used although it may lose confirmed rows.
enum class Hazards { Refused, Accepted };

/// Checks that the link's database can be reached or its file is a store, and writes the link file
/// to the path atomically. An existing link is replaced; a store or any other file is not. Throws
/// DatabaseExists (3204) for such a file, ConnectionFailed (3151) if the database cannot be
/// reached, DatabaseFileNotFound (3024) if the link's file is missing, UnrecognizedFormat (3343) if
/// it is no store and for values that a link cannot store, InvalidOperation (3219) for a server
/// that may lose confirmed rows, and PermissionDenied (3051) if the folder is not writable.
LinkedTo linkStore(const QString& path, const dao::Link& link, Hazards hazards);

} // namespace storetools
