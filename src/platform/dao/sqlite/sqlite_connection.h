#pragma once

#include "platform/dao/engine/connection.h"

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
    /// Returns the prepared statement, ready for binding values. A statement that may change the
    /// schema is not cached, and it clears the schema cache.
    QSqlQuery& statement(const QString& sql);
    /// Removes a failed statement from the cache.
    void drop(const QString& sql);

private:
    QString name_;
    QSqlDatabase database_;
    std::map<QString, QSqlQuery> statements_;
    QSqlQuery oneShot_;
};

} // namespace dao::sqlite
