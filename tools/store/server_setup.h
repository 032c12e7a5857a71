#pragma once

#include <QString>
#include <QStringList>

namespace storetools {

/// Returns the SQL script with which a server's administrator prepares the database of a store. The
/// script creates the owner's role, one role for each station, the log of changes, and triggers.
/// The triggers write the log. They also refuse an order number that is more than 1000 above the
/// highest one, and a counter number above 1,000,000,000 that the server has not assigned. The
/// owner's role creates and changes tables. A station's role has only the rights that the program
/// needs. The script must run in the store's database and is idempotent; a later run may add
/// stations.
QString serverSetup(const QStringList& stations);

/// Splits a comma-separated text into the names of roles and returns them. Throws WrongCall unless
/// each name consists of 1 to 63 lower-case letters, digits and underscores, does not begin with a
/// digit or with "pg_", and is not reserved.
QStringList stationRoles(const QString& text);

} // namespace storetools
