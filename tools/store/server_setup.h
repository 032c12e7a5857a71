#pragma once

#include <QString>
#include <QStringList>

namespace storetools {

/// Returns the SQL script with which a server's administrator prepares the database of a store. It
/// creates the owner's role, one role for each station, the log of changes, and the triggers that
/// write the log and refuse numbers far beyond the last one. The owner role creates and changes
/// tables. A station's role has only the rights that the program needs. The script must run in the
/// store's database and is idempotent; a later run may add stations.
QString serverSetup(const QStringList& stations);

/// Returns the role names in a text with commas between them. Throws WrongCall for a text that is
/// no list of names of lower-case letters, digits and underscores, or that contains a reserved
/// name.
QStringList stationRoles(const QString& text);

} // namespace storetools
