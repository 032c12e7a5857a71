#pragma once

#include "platform/dao/engine/link.h"
#include "support/server_connection.h"
#include "support/throwaway_server.h"
#include "tools/store/program_run.h"

#include <QUrl>

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
    explicit ServerSql(const dao::Link& link) : connection_(link) {}

    /// Returns the SQLSTATE of a failure, or an empty text.
    QString errorOf(const QString& sql) { return connection_.errorOf(sql); }
    void run(const QString& sql) { EXPECT_EQ(errorOf(sql), QString()) << sql.toStdString(); }
    QList<QVariantList> rows(const QString& sql) { return connection_.rows(sql); }
    QVariant scalar(const QString& sql) { return rows(sql).value(0).value(0); }

private:
    testsupport::ServerConnection connection_;
};

} // namespace storetooltest
