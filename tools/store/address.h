#pragma once

#include "platform/dao/link.h"

#include <QString>

#include <optional>

namespace storetools {

/// True for a text that names a database on a server (postgresql://... or postgres://...).
bool isAddress(const QString& place);

/// Takes an address apart as the server's own client library does:
/// postgresql://USER@HOST[:PORT]/DATABASE[?sslmode=MODE&host=FOLDER&port=PORT&user=NAME&dbname=NAME],
/// parts percent-encoded where needed (https://www.postgresql.org/docs/15/libpq-connect.html).
/// Raises 3343 for one that says too little, more than a link can hold, or a password.
dao::Link parseAddress(const QString& address);

/// The server that "HOST", "HOST:PORT", "[ADDRESS]:PORT", "/FOLDER" or "/FOLDER:PORT" names, on a
/// link without its other parts. Raises 3343.
dao::Link parseServer(const QString& server);

} // namespace storetools
