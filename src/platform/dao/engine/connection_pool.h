#pragma once

#include "platform/dao/engine/connection.h"

#include <deque>
#include <map>

namespace dao {

/// Connections that no database works over at the moment. Every use of the store opens a database
/// of its own; it takes one of these where it can, so that a click does not pay for connecting.
class ConnectionPool
{
public:
    static ConnectionPool& instance();

    /// The connection to the store that was given back last; null where there is none. Stores with
    /// one key are the same one.
    std::shared_ptr<EngineConnection> take(const QString& key);
    /// Keeps the connection; the oldest goes where there are too many.
    void give(const QString& key, std::shared_ptr<EngineConnection> connection);

    /// The connection that all databases of a store share; null where there is none.
    std::shared_ptr<EngineConnection> shared(const QString& key) const;
    /// Lets all databases to come share the connection, and keeps it where none does.
    void share(const QString& key, const std::shared_ptr<EngineConnection>& connection);
    /// No other database shall share it any more.
    void unshare(const QString& key);

    /// Lets go of all connections; one that is shared stays known while a database uses it.
    void clear();

private:
    ConnectionPool();

    struct Idle
    {
        QString key;
        std::shared_ptr<EngineConnection> connection;
    };
    struct Shared
    {
        std::weak_ptr<EngineConnection> connection;
        std::shared_ptr<EngineConnection> kept;
    };
    std::deque<Idle> idle_;
    std::map<QString, Shared> shared_;
};

} // namespace dao
