#pragma once

#include "platform/dao/link.h"

#include <libpq-fe.h>
#include <memory>

namespace bench {

struct ResultCloser
{
    void operator()(PGresult* result) const { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, ResultCloser>;

/// The bare calls of the server's client library over one open connection.
class BareServer
{
public:
    explicit BareServer(const dao::Link& link);

    /// Runs the statement; a failure ends the benchmark.
    Result run(const QString& sql) const;
    /// The first column of the first row; empty where there is none.
    QByteArray value(const QString& sql) const;
    /// Waits for the end of a copy that was begun.
    void endCopy() const;

    PGconn* connection() const { return connection_.get(); }

private:
    struct ConnectionCloser
    {
        void operator()(PGconn* connection) const { PQfinish(connection); }
    };

    std::unique_ptr<PGconn, ConnectionCloser> connection_;
};

} // namespace bench
