#pragma once

#include "platform/dao/engine/link.h"

#include <QList>
#include <QVariant>

#include <memory>

struct pg_conn;
struct pg_result;

namespace testsupport {

/// A direct connection to a server that bypasses the engine. It has no timeout.
class ServerConnection
{
public:
    /// Ends the process if the server cannot be reached.
    explicit ServerConnection(const dao::Link& link);
    ~ServerConnection();
    ServerConnection(const ServerConnection&) = delete;
    ServerConnection& operator=(const ServerConnection&) = delete;

    /// Returns the rows of a statement without the column of internal row ids. Date and time are
    /// ISO texts, Boolean values 1 and 0, Null is an invalid value, and not-a-number is "NaN".
    /// `values` are the parameters $1, $2 and so on. Throws std::runtime_error if the statement
    /// fails.
    QList<QVariantList> rows(const QString& sql, const QVariantList& values = {});
    /// Returns the SQLSTATE if the statement fails, otherwise an empty text.
    QString errorOf(const QString& sql);
    /// Connects again after the server has been restarted.
    void reconnect();

private:
    std::shared_ptr<pg_result> run(const QString& sql, const QVariantList& values);

    pg_conn* connection_;
};

} // namespace testsupport
