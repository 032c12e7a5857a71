#pragma once

#include "platform/dao/engine/session.h"
#include "platform/dao/engine/types.h"

namespace dao {

/// Opens the store at the path. The file is either an embedded store or a link, to a database on a
/// server or to an embedded store in another folder. Throws like Workspace::OpenDatabase.
std::unique_ptr<Session> openStore(const QString& path, const Timeouts& timeouts);
/// Creates an empty embedded store and opens it. Throws like Workspace::CreateDatabase.
std::unique_ptr<Session> createStore(const QString& path, const Timeouts& timeouts);

/// Returns one line for each station that is connected to the store at the path, as far as stations
/// can be told apart; empty if there is none or no store. This process must not have the store
/// open. Throws what opening a database on a server throws.
QStringList connectedStations(const QString& path);

} // namespace dao
