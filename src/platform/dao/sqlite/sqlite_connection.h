#pragma once

#include "platform/dao/engine/connection_pool.h"
#include "platform/dao/sqlite/sqlite_presence.h"

#include <QSqlDatabase>
#include <QSqlQuery>

namespace dao::sqlite {

/// A connection of Qt SQL to a store file. The connection has a unique name and a cache of prepared
/// statements.
class SqliteConnection final : public EngineConnection
{
public:
    SqliteConnection();
    ~SqliteConnection() override;

    QSqlDatabase& database() { return database_; }
    /// Keeps the lock that shows the file as in use (Presence) until the connection has been
    /// closed.
    void setPresence(std::shared_ptr<Presence> presence) { presence_ = std::move(presence); }
    /// Returns the prepared statement for an SQL text, ready for binding values. A statement that
    /// may change the schema is not cached, and preparing it clears the schema cache.
    QSqlQuery& statement(const QString& sql);
    /// Removes a failed statement from the cache.
    void drop(const QString& sql);

private:
    std::shared_ptr<Presence> presence_; ///< Destroyed last.
    QString name_;
    QSqlDatabase database_;
    std::map<QString, QSqlQuery> statements_;
    QSqlQuery oneShot_;
};

} // namespace dao::sqlite
