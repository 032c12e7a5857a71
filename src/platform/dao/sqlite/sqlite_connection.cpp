#include "platform/dao/sqlite/sqlite_connection.h"

#include "platform/runtime/call_watch.h"

#include <QSqlError>
#include <QUrl>

namespace dao::sqlite {

using namespace Qt::StringLiterals;

namespace {

/// The maximum number of cached statements, which is higher than the number of statements that the
/// forms repeat. The statements that read the pages of a grid contain row ids, so they are rarely
/// repeated.
constexpr std::size_t mostKept = 64;

QString nextConnectionName()
{
    static int made = 0;
    return u"dao-%1"_s.arg(++made);
}

QSqlQuery prepared(const QSqlDatabase& database, const QString& sql)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.prepare(sql); // The caller checks lastError.
    return query;
}

} // namespace

SqliteConnection::SqliteConnection()
    : name_(nextConnectionName()), database_(QSqlDatabase::addDatabase(u"QSQLITE"_s, name_)),
      oneShot_(database_)
{
}

SqliteConnection::~SqliteConnection()
{
    // The user sees a notice if closing the connection takes long. Closing a file on a file server
    // needs the server's answer.
    const runtime::WatchedCall call([uri = database_.databaseName()] { return QUrl(uri).path(); });
    statements_.clear();
    oneShot_ = QSqlQuery();
    database_.close();
    database_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(name_);
}

QSqlQuery& SqliteConnection::statement(const QString& sql)
{
    // BEGIN and COMMIT do not change the schema, so the caches of the schema and of the prepared
    // statements stay valid. ROLLBACK can undo changes of tables, so the two caches are cleared.
    const bool keepsSchema = sql.startsWith("BEGIN"_L1) || sql.startsWith("COMMIT"_L1);
    if (mayChangeSchema(sql) && !keepsSchema) {
        forgetSchema();
        statements_.clear();
        oneShot_ = prepared(database_, sql);
        return oneShot_;
    }
    const auto kept = statements_.find(sql);
    if (kept != statements_.end())
        return kept->second;
    if (statements_.size() >= mostKept)
        statements_.clear();
    QSqlQuery query = prepared(database_, sql);
    if (query.lastError().isValid()) {
        oneShot_ = std::move(query);
        return oneShot_;
    }
    return statements_.emplace(sql, std::move(query)).first->second;
}

void SqliteConnection::drop(const QString& sql)
{
    statements_.erase(sql);
    oneShot_ = QSqlQuery(database_);
}

} // namespace dao::sqlite
