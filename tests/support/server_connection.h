#pragma once

#include "platform/dao/postgres/link.h"

#include <QList>
#include <QVariant>

#include <memory>

struct pg_conn;
struct pg_result;

namespace testsupport {

/// A plain connection to a server, past the engine under test. It waits for as long as the server
/// takes.
class ServerConnection
{
public:
    /// Ends the process if the server cannot be reached.
    explicit ServerConnection(const dao::Link& link);
    ~ServerConnection();
    ServerConnection(const ServerConnection&) = delete;
    ServerConnection& operator=(const ServerConnection&) = delete;

    /// The rows that a statement gives, without the column of internal row ids: moments as ISO
    /// text, truth as 1 and 0, Null as an invalid value, "NaN" for what is no number. The values
    /// are those of $1, $2 and so on. Throws a std::runtime_error if the statement fails.
    QList<QVariantList> rows(const QString& sql, const QVariantList& values = {});
    /// The SQLSTATE of a failure; empty if there is none.
    QString errorOf(const QString& sql);
    /// Connects again to a server that has been restarted.
    void reconnect();

private:
    std::shared_ptr<pg_result> run(const QString& sql, const QVariantList& values);

    pg_conn* connection_;
};

} // namespace testsupport
