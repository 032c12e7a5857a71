#pragma once

namespace dao::postgres {

/// Loads PostgreSQL's client library, libpq, at the first call. Returns false if it is not
/// installed. No libpq function may be called before this function has returned true.
bool loadClientLibrary();

} // namespace dao::postgres
