#pragma once

#include "platform/dao/engine/session.h"

#include <deque>
#include <map>

namespace dao {

/// A connection to a store, with a cache of the store's schema. A connection in the pool outlives
/// the session that opened the connection, and later sessions use the connection again.
class EngineConnection
{
public:
    EngineConnection() { ++living_; }
    virtual ~EngineConnection() { --living_; }
    Q_DISABLE_COPY_MOVE(EngineConnection)

    SchemaMemory& schema() { return *schema_; }
    /// Lets this connection use the schema cache of another connection to the same store.
    void shareSchema(std::shared_ptr<SchemaMemory> schema) { schema_ = std::move(schema); }
    /// Gives this connection an empty schema cache of its own.
    void forgetSchema() { schema_ = std::make_shared<SchemaMemory>(); }

    /// Returns the number of connections that exist in this process.
    static int living() { return living_; }

private:
    static inline int living_ = 0;
    std::shared_ptr<SchemaMemory> schema_ = std::make_shared<SchemaMemory>();
};

/// Keeps open connections for later use, because connecting is slow. A new Database takes its
/// connection from the pool if the pool has one for the store.
class ConnectionPool
{
public:
    static ConnectionPool& instance();

    /// Removes an idle connection from the pool and returns it. A key identifies a store and its
    /// timeouts. If there are several connections for the key, returns the one that was added last.
    /// If there is none, returns null.
    std::shared_ptr<EngineConnection> take(const QString& key);
    /// Adds an idle connection to the pool. If the pool is full, the connection that was added
    /// first is closed.
    void give(const QString& key, std::shared_ptr<EngineConnection> connection);

    /// Returns the connection that all Database objects of one store share, or null if there is
    /// none.
    std::shared_ptr<EngineConnection> shared(const QString& key) const;
    /// Makes `connection` the connection that later Database objects of the store share. The pool
    /// keeps the connection open while no Database uses it.
    void share(const QString& key, const std::shared_ptr<EngineConnection>& connection);
    /// Removes the shared connection of a store from the pool, so that later Database objects do
    /// not use it.
    void unshare(const QString& key) { shared_.erase(key); }

    /// Closes all connections that no Database uses. A shared connection that a Database uses
    /// remains shared.
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
