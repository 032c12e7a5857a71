#pragma once

#include "platform/dao/driver.h"
#include "platform/dao/link.h"
#include "platform/dao/waits.h"

namespace dao {

/// Connections to a PostgreSQL server whose every call returns in bounded time.
namespace postgres {

/// What opening a store asks of the server in one statement.
struct Greeting
{
    QString schemaMark; ///< Changes with every change of the schema.
    QString encoding;
};

/// Logs in and makes the session what a store needs. Raises 3151 with the server and its reason.
std::unique_ptr<SqlConnection> connect(const Link& link, const Waits& waits);

/// Asks in one round trip what opening needs to know; nothing where the connection has died.
std::optional<Greeting> greet(SqlConnection& connection, const Link& link);

/// True where the connection is known to have been lost. Asks nothing of the server: what it has
/// sent by itself is read.
bool isLost(SqlConnection& connection);

/// True in a transaction that can only be taken back.
bool hasFailedTransaction(SqlConnection& connection);

/// Runs the statement as it stands; the query's lastError tells of a failure. A wait for its answer
/// beyond the patience ends the connection.
QSqlQuery& execute(SqlConnection& connection, const QString& sql,
                   std::chrono::milliseconds patience);

/// The run-time error that a failed statement stands for.
runtime::RunTimeError errorOf(const QSqlError& error, SqlConnection& connection, const Link& link);

/// The statement with the values in the places of its question marks. Raises 3421 for a value that
/// the server cannot hold.
QString withValues(const QString& sql, const QVariantList& values);

/// Runs a statement over rows, with the values in the places of its question marks. One that comes
/// again is kept by the server, which then neither reads nor plans it anew. Not in a transaction,
/// for it may have to be tried twice.
QSqlQuery& executeKept(SqlConnection& connection, const QString& sql, const QVariantList& values,
                       std::chrono::milliseconds patience);

int columnCount(const QSqlQuery& query);

} // namespace postgres

} // namespace dao
