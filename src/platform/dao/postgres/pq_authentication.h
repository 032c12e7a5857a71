#pragma once

#include "platform/dao/postgres/pq_handle.h"

#include <QByteArrayView>

namespace dao::postgres {

/// What the messages of a server ask for while a client logs in.
enum class PasswordRequest {
    None,       ///< No password, or one that the client proves without sending it (SCRAM).
    Readable,   ///< The password in clear text or as an MD5 digest.
    Incomplete, ///< The messages end within a request.
};

/// Examines the beginning of a server's messages
/// (https://www.postgresql.org/docs/15/protocol-message-formats.html).
PasswordRequest passwordRequestIn(QByteArrayView messages);

/// Examines what has arrived over an unencrypted connection and is not yet read by the client
/// library, which would answer such a request at once.
PasswordRequest pendingPasswordRequest(const PGconn* connection);

} // namespace dao::postgres
