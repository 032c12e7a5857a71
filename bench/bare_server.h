#pragma once

#include "platform/dao/engine/link.h"

#include <libpq-fe.h>
#include <memory>

namespace bench {

struct ResultCloser
{
    void operator()(PGresult* result) const { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, ResultCloser>;

/// A connection to a database server through plain libpq calls. It is the baseline of the server
/// benchmarks.
class BareServer
{
public:
    explicit BareServer(const dao::Link& link);

    /// Runs the SQL statement. Ends the benchmark program if the statement fails.
    Result run(const QString& sql) const;
    /// Runs the query and returns the first column of its first row, or an empty value if the
    /// result has no row.
    QByteArray value(const QString& sql) const;
    /// Waits until the server has finished the COPY statement whose data was transferred. Ends the
    /// benchmark program if the statement failed.
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
