#pragma once

#include "platform/dao/engine/link.h"
#include "platform/dao/engine/types.h"
#include "platform/dao/postgres/pq_handle.h"
#include "platform/runtime/run_time_error.h"

namespace dao::postgres {

/// Logs in to the server and applies the settings that a store needs. The log-in takes at most five
/// seconds, including the look-up of the server's name. The returned connection is in non-blocking
/// mode. Throws ConnectionFailed (3151) with the server's name and the reason.
ConnectionHandle logIn(const Link& link, const Timeouts& timeouts);

/// Returns the error ConnectionFailed (3151) for a log-in that has failed for this reason.
runtime::RunTimeError logInError(const Link& link, const QString& reason);

} // namespace dao::postgres
