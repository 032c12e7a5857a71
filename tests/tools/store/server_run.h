#pragma once

#include "platform/dao/link.h"
#include "support/throwaway_server.h"
#include "tools/store/program_run.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUrl>
#include <QUuid>

namespace storetooltest {

inline std::string asText(const QStringList& lines)
{
    return lines.join(u'\n').toStdString();
}

/// Returns a database's address in command line syntax.
inline QString addressOf(const dao::Link& link)
{
    const auto encoded = [](const QString& text) {
        return QString::fromLatin1(QUrl::toPercentEncoding(text));
    };
    return u"postgresql://%1@%2:%3/%4?sslmode=%5"_s.arg(encoded(link.user), encoded(link.server),
                                                        QString::number(link.port),
                                                        encoded(link.database), link.tls);
}

/// A direct SQL connection to the server, as superuser or as a station's user.
class ServerSql
{
public:
    explicit ServerSql(const dao::Link& link) : name_(QUuid::createUuid().toString())
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QPSQL"_s, name_);
        database.setHostName(link.server);
        database.setPort(link.port);
        database.setDatabaseName(link.database);
        database.setUserName(link.user);
        if (!database.open())
            ADD_FAILURE() << qPrintable(database.lastError().text());
    }
    ~ServerSql() { QSqlDatabase::removeDatabase(name_); }
    ServerSql(const ServerSql&) = delete;
    ServerSql& operator=(const ServerSql&) = delete;

    /// Returns the SQLSTATE of a failure, or an empty text.
    QString errorOf(const QString& sql)
    {
        QSqlQuery query(QSqlDatabase::database(name_));
        return query.exec(sql) ? QString() : query.lastError().nativeErrorCode();
    }
    void run(const QString& sql) { EXPECT_EQ(errorOf(sql), QString()) << sql.toStdString(); }
    QList<QVariantList> rows(const QString& sql)
    {
        QSqlQuery query(QSqlDatabase::database(name_));
        EXPECT_TRUE(query.exec(sql)) << qPrintable(sql) << qPrintable(query.lastError().text());
        QList<QVariantList> all;
        while (query.next()) {
            QVariantList row;
            for (int i = 0; i < query.record().count(); ++i)
                row.append(query.value(i));
            all.append(row);
        }
        return all;
    }
    QVariant scalar(const QString& sql) { return rows(sql).value(0).value(0); }

private:
    QString name_;
};

} // namespace storetooltest
