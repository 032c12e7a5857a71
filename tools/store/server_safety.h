#pragma once

#include <QString>
#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

class Place;

/// Findings about the settings of the server of a store. There are none for an embedded store and
/// for a server that cannot be reached.
struct Safety
{
    QStringList hazards; ///< The server may lose committed rows.
    QStringList remarks; ///< The server may not notice damage.
};

/// Returns the findings about the settings of a store's server, as lines for the user.
Safety safetyOf(const Place& place);

/// Returns the advice to the user about a server that may lose rows.
QString adviceForServer();

/// Throws InvalidOperation (3219) if the server of an open store may lose committed rows.
void requireDurable(dao::Database& database);

} // namespace storetools
