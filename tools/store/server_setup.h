#pragma once

#include <QString>

namespace storetools {

/// The SQL by which a server's keeper makes the two roles of a store's database, to be run in that
/// database: the owner, who makes and changes the tables, and the role of the stations, which may
/// no more than the program does. Running it again changes nothing.
QString serverSetup();

} // namespace storetools
