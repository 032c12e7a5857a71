#pragma once

#include <QStringList>

namespace dao {

/// Returns one line for each station that is connected to the store at the path, as far as stations
/// can be told apart; empty if there is none or no store. This process must not have the store
/// open. Throws what opening a database on a server throws.
QStringList connectedStations(const QString& path);

} // namespace dao
