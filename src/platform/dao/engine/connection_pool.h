#pragma once

#include "platform/dao/engine/connection.h"

#include <deque>
#include <map>

namespace dao {

/// Keeps connections for later use. Every use of the store opens a new Database, which takes a
/// connection from the pool if possible, because connecting is slow.
class ConnectionPool
{
public:
    static ConnectionPool& instance();

    /// Returns the idle connection that was returned last for this key, or null. Each store has a
    /// key of its own.
    std::shared_ptr<EngineConnection> take(const QString& key);
    /// Keeps an idle connection. If there are too many, the oldest one is closed.
    void give(const QString& key, std::shared_ptr<EngineConnection> connection);

    /// Returns the connection that all databases of a store share, or null.
    std::shared_ptr<EngineConnection> shared(const QString& key) const;
    /// Makes this the connection that later databases of the store share. The pool keeps it while
    /// no database uses it.
    void share(const QString& key, const std::shared_ptr<EngineConnection>& connection);
    /// Removes the shared connection from the pool, so that no later database shares it.
    void unshare(const QString& key);

    /// Closes all connections that no database uses. A shared connection in use remains shared.
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
