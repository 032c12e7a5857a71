#pragma once

#include "platform/dao/engine/timeouts.h"
#include "platform/dao/postgres/link.h"
#include "platform/dao/postgres/pq_handle.h"
#include "platform/runtime/run_time_error.h"

namespace dao::postgres {

/// Logs in to the server within five seconds, the look-up of its name included, and makes the
/// settings that a store needs. The connection is in non-blocking mode. Throws ConnectionFailed
/// (3151) with the server's name and the reason.
ConnectionHandle logIn(const Link& link, const Timeouts& timeouts);

/// The error for a log-in that failed for this reason.
runtime::RunTimeError logInError(const Link& link, const QString& reason);

} // namespace dao::postgres
