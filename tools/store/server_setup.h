#pragma once

#include <QString>

namespace storetools {

/// Returns the SQL script with which a server's administrator creates the two roles of a store's
/// database. The owner role creates and changes tables. The station role has only the rights that
/// the program needs. The script must run in the store's database and is idempotent.
QString serverSetup();

} // namespace storetools
