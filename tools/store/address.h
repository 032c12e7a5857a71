#pragma once

#include "platform/dao/engine/link.h"

#include <QString>

#include <optional>

namespace storetools {

/// Returns true if the text is a server address (postgresql://... or postgres://...).
bool isAddress(const QString& place);

/// Parses the address of a server's database in the same way as libpq:
/// postgresql://USER@HOST[:PORT]/DATABASE[?sslmode=MODE&host=FOLDER&port=PORT&user=NAME&dbname=NAME],
/// with percent-encoding (https://www.postgresql.org/docs/15/libpq-connect.html). Throws
/// UnrecognizedFormat (3343) for an address that is incomplete or invalid, or that contains a
/// password.
dao::Link parseAddress(const QString& address);

/// Parses the name of a server: "HOST", "HOST:PORT", "[ADDRESS]:PORT", "/FOLDER" or "/FOLDER:PORT".
/// Returns a dao::Link with the server, the port and the default TLS mode for this server. Its
/// database and user are not set. Throws UnrecognizedFormat (3343) for an invalid name.
dao::Link parseServer(const QString& server);

} // namespace storetools
