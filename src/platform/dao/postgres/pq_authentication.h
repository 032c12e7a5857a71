#pragma once

#include "platform/dao/postgres/pq_handle.h"

#include <QByteArrayView>

namespace dao::postgres {

/// The kind of password request that a server sends while a client logs in.
enum class PasswordRequest {
    None,       ///< No password, or one that the client proves without sending it (SCRAM).
    Readable,   ///< The password in clear text or as an MD5 digest.
    Incomplete, ///< The messages end within a request.
};

/// Returns the kind of password request in the messages that a server has sent so far. The format
/// of the messages is described in
/// https://www.postgresql.org/docs/15/protocol-message-formats.html.
PasswordRequest passwordRequestIn(QByteArrayView messages);

/// Examines the data that has arrived over an unencrypted connection and that the client library
/// has not read yet. Returns the kind of password request in this data. The program examines the
/// data before the library reads it, because the library would answer a request at once.
PasswordRequest pendingPasswordRequest(const PGconn* connection);

} // namespace dao::postgres
