#pragma once

#include "platform/dao/engine/session.h"
#include "platform/dao/engine/timeouts.h"

namespace dao {

/// Opens the store at the path on its engine: the file is the store itself or a link to a database
/// on a server. Throws what Workspace::OpenDatabase throws.
std::unique_ptr<Session> openStore(const QString& path, const Timeouts& timeouts);
/// Makes an empty embedded store and opens it.
std::unique_ptr<Session> createStore(const QString& path, const Timeouts& timeouts);

} // namespace dao
