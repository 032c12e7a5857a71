#pragma once

#include "platform/dao/engine/session.h"
#include "platform/dao/engine/types.h"

namespace dao {

/// Opens the store at the path. The file at the path is an embedded store or a link file. A link
/// file names a database on a server or an embedded store in another folder. Throws the same errors
/// as Workspace::OpenDatabase.
std::unique_ptr<Session> openStore(const QString& path, const Timeouts& timeouts);
/// Creates an empty embedded store and opens it. Throws the same errors as
/// Workspace::CreateDatabase.
std::unique_ptr<Session> createStore(const QString& path, const Timeouts& timeouts);

/// Returns one line for each station that is connected to the store at the path. Stations that
/// cannot be distinguished share one line. Returns an empty list if no station is connected, or if
/// there is no embedded store at the path. This process must not have the store open. Throws the
/// errors of opening the store if the store is on a server.
QStringList connectedStations(const QString& path);

} // namespace dao
