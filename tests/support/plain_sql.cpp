#include "support/plain_sql.h"

#include "platform/dao/link.h"
#include "platform/dao/postgres_connection.h"
#include "support/server_sql.h"

#include <QDateTime>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace testsupport {

namespace {

QVariant shown(const QVariant& value)
{
    if (value.isNull())
        return {};
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toInt();
    case QMetaType::QDate:
        return value.toDate().toString(u"yyyy-MM-dd"_s);
    case QMetaType::QDateTime: {
        const QDateTime moment = value.toDateTime();
        const bool whole = moment.time() == QTime(0, 0);
        return moment.toString(whole ? u"yyyy-MM-dd"_s : u"yyyy-MM-ddTHH:mm:ss"_s);
    }
    case QMetaType::Double:
        return qIsNaN(value.toDouble()) ? QVariant(u"NaN"_s) : value;
    default:
        return value;
    }
}

QSqlQuery executed(const QSqlDatabase& database, const QString& sql, const QList<QVariant>& values,
                   bool onServer)
{
    QSqlQuery query(database);
    bool good = false;
    if (onServer) {
        good = query.exec(dao::postgres::withValues(sql, values));
    } else {
        query.setForwardOnly(true);
        good = query.prepare(sql);
        for (const QVariant& value : values)
            query.addBindValue(value);
        good = good && query.exec();
    }
    if (!good)
        throw std::runtime_error((sql + u'\n' + query.lastError().text()).toStdString());
    return query;
}

} // namespace

PlainSql::PlainSql(const QString& path) : name_(QUuid::createUuid().toString())
{
    const std::optional<dao::Link> link = dao::linkAt(path);
    onServer_ = link.has_value();
    QSqlDatabase database = QSqlDatabase::addDatabase(onServer_ ? u"QPSQL"_s : u"QSQLITE"_s, name_);
    if (link) {
        database.setHostName(link->server);
        database.setPort(link->port);
        database.setUserName(link->user);
        database.setConnectOptions(u"options='-c standard_conforming_strings=on'"_s);
    }
    database.setDatabaseName(link ? link->database : path);
    if (!database.open())
        qFatal("%s", qUtf8Printable(database.lastError().text()));
    // A test's rows may be lost in a system crash.
    if (!onServer_)
        QSqlQuery(database).exec(u"PRAGMA synchronous = OFF"_s);
}

PlainSql::~PlainSql()
{
    QSqlDatabase::database(name_, false).close();
    QSqlDatabase::removeDatabase(name_);
}

QList<QList<QVariant>> PlainSql::rows(const QString& sql, const QList<QVariant>& values)
{
    const QString statement = onServer_ ? translated(sql) : sql;
    return statement.isEmpty() ? QList<QList<QVariant>>() : exactly(statement, values);
}

QList<QList<QVariant>> PlainSql::exactly(const QString& sql, const QList<QVariant>& values)
{
    QList<QList<QVariant>> all;
    QSqlQuery query = executed(database(), sql, values, onServer_);
    const QSqlRecord columns = query.record();
    while (query.next()) {
        QList<QVariant> row;
        for (int i = 0; i < columns.count(); ++i) {
            if (columns.fieldName(i) != u"zomrel_row"_s)
                row.append(shown(query.value(i)));
        }
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
    QSqlDatabase connection = database();
    connection.close();
    if (!connection.open())
        qFatal("%s", qUtf8Printable(connection.lastError().text()));
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
    for (QSqlQuery found = executed(database(), query, {}, true); found.next();)
        names.append(found.value(0).toString());
    for (QSqlQuery found =
             executed(database(), u"SELECT tablename FROM pg_tables WHERE schemaname = 'public'"_s,
                      {}, true);
         found.next();)
        tables.append(found.value(0).toString());
    return serverSql(sql, names, tables);
}

} // namespace testsupport
