#pragma once

#include "platform/dao/engine/connection.h"

#include <QSqlDatabase>
#include <QSqlQuery>

namespace dao::sqlite {

/// One connection of Qt Sql under a name of its own, with its prepared statements.
class SqliteConnection final : public EngineConnection
{
public:
    SqliteConnection();
    ~SqliteConnection() override;

    QSqlDatabase& database() { return database_; }
    /// The statement ready to be bound and run. A statement that may change the schema is prepared
    /// for this one time, and what is known of the schema is forgotten.
    QSqlQuery& statement(const QString& sql);
    /// Lets go of a statement that has failed.
    void drop(const QString& sql);

private:
    QString name_;
    QSqlDatabase database_;
    std::map<QString, QSqlQuery> statements_;
    QSqlQuery oneShot_;
};

} // namespace dao::sqlite
