#pragma once

#include "platform/dao/engine/session.h"

#include <deque>
#include <map>

namespace dao {

/// A connection to a store, with a cache of the store's schema. A pooled connection outlives the
/// session that opened it and serves later sessions.
class EngineConnection
{
public:
    EngineConnection() { ++living_; }
    virtual ~EngineConnection() { --living_; }
    Q_DISABLE_COPY_MOVE(EngineConnection)

    SchemaMemory& schema() { return *schema_; }
    /// Uses the schema cache of another connection to the same store.
    void shareSchema(std::shared_ptr<SchemaMemory> schema) { schema_ = std::move(schema); }
    /// Gives this connection an empty schema cache of its own.
    void forgetSchema() { schema_ = std::make_shared<SchemaMemory>(); }

    /// Returns the number of connections in the process.
    static int living() { return living_; }

private:
    static inline int living_ = 0;
    std::shared_ptr<SchemaMemory> schema_ = std::make_shared<SchemaMemory>();
};

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
    void unshare(const QString& key) { shared_.erase(key); }

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
