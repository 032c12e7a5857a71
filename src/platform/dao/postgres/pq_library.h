#pragma once

namespace dao::postgres {

/// Loads PostgreSQL's client library, libpq, at the first call. False if it is not installed.
/// No libpq function may be called before this has returned true.
bool loadClientLibrary();

} // namespace dao::postgres
