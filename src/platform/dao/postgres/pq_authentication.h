#pragma once

#include "platform/dao/postgres/pq_handle.h"

#include <QByteArrayView>

namespace dao::postgres {

/// The kind of password that a server requests while a client logs in.
enum class PasswordRequest {
    None,       ///< No password, or one that the client proves without sending it (SCRAM).
    Readable,   ///< The password in clear text or as an MD5 digest.
    Incomplete, ///< The messages end within a request.
};

/// Returns the password request in the messages that a server has sent so far. Their format is
/// described in https://www.postgresql.org/docs/15/protocol-message-formats.html.
PasswordRequest passwordRequestIn(QByteArrayView messages);

/// Looks at the data that has arrived over an unencrypted connection and that the client library
/// has not read yet. Returns the server's request for a password if the data contains one. The
/// request is looked at first, because the library would answer it at once.
PasswordRequest pendingPasswordRequest(const PGconn* connection);

} // namespace dao::postgres
