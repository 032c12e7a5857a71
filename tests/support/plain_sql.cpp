#include "support/plain_sql.h"

#include "platform/dao/engine/link.h"
#include "support/server_connection.h"
#include "support/server_sql.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace testsupport {

namespace {

QSqlQuery executed(const QSqlDatabase& database, const QString& sql, const QList<QVariant>& values)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    bool good = query.prepare(sql);
    for (const QVariant& value : values)
        query.addBindValue(value);
    good = good && query.exec();
    if (!good)
        throw std::runtime_error((sql + u'\n' + query.lastError().text()).toStdString());
    return query;
}

QVariant shown(const QVariant& value)
{
    return value.isNull() ? QVariant() : value;
}

} // namespace

PlainSql::PlainSql(const QString& path) : name_(QUuid::createUuid().toString())
{
    if (const std::optional<dao::Link> link = dao::linkAt(path)) {
        server_ = std::make_unique<ServerConnection>(*link);
        return;
    }
    QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, name_);
    database.setDatabaseName(path);
    if (!database.open())
        qFatal("%s", qUtf8Printable(database.lastError().text()));
    QSqlQuery(database).exec(u"PRAGMA synchronous = OFF"_s); // Tests need no durability.
}

PlainSql::~PlainSql()
{
    if (server_)
        return;
    QSqlDatabase::database(name_, false).close();
    QSqlDatabase::removeDatabase(name_);
}

QList<QList<QVariant>> PlainSql::rows(const QString& sql, const QList<QVariant>& values)
{
    const QString statement = server_ ? translated(sql) : sql;
    return statement.isEmpty() ? QList<QList<QVariant>>() : exactly(statement, values);
}

QList<QList<QVariant>> PlainSql::exactly(const QString& sql, const QList<QVariant>& values)
{
    if (server_)
        return server_->rows(sql, values);
    QList<QList<QVariant>> all;
    QSqlQuery query = executed(database(), sql, values);
    const int columns = query.record().count();
    while (query.next()) {
        QList<QVariant> row;
        for (int i = 0; i < columns; ++i)
            row.append(shown(query.value(i)));
        all.append(row);
    }
    return all;
}

QVariant PlainSql::scalar(const QString& sql, const QList<QVariant>& values)
{
    return rows(sql, values).value(0).value(0);
}

void PlainSql::reconnect()
{
    server_->reconnect();
}

QString PlainSql::translated(const QString& sql) const
{
    const QString query =
        QStringLiteral("SELECT DISTINCT n.name FROM pg_class c, LATERAL "
                       "(SELECT c.relname AS name UNION SELECT a.attname FROM pg_attribute a "
                       "WHERE a.attrelid = c.oid AND a.attnum > 0) AS n "
                       "WHERE c.relnamespace = 'public'::regnamespace");
    QStringList names;
    QStringList tables;
    for (const QVariantList& each : server_->rows(query))
        names.append(each.front().toString());
    for (const QVariantList& each :
         server_->rows(u"SELECT tablename FROM pg_tables WHERE schemaname = 'public'"_s))
        tables.append(each.front().toString());
    return serverSql(sql, names, tables);
}

} // namespace testsupport
