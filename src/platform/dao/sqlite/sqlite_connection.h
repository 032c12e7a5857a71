#pragma once

#include "platform/dao/engine/connection_pool.h"
#include "platform/dao/sqlite/sqlite_presence.h"

#include <QSqlDatabase>
#include <QSqlQuery>

namespace dao::sqlite {

/// A Qt Sql connection with a unique name and a cache of prepared statements.
class SqliteConnection final : public EngineConnection
{
public:
    SqliteConnection();
    ~SqliteConnection() override;

    QSqlDatabase& database() { return database_; }
    /// Keeps the object until after the connection is closed.
    void setPresence(std::shared_ptr<Presence> presence) { presence_ = std::move(presence); }
    /// Returns the prepared statement, ready for binding values. A statement that may change the
    /// schema is not cached, and it clears the schema cache.
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
