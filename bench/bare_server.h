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

/// A connection to a server that is used through plain libpq calls. It is the baseline of the
/// server benchmarks.
class BareServer
{
public:
    explicit BareServer(const dao::Link& link);

    /// Runs the statement. Ends the benchmark if it fails.
    Result run(const QString& sql) const;
    /// Returns the first column of the first row, or an empty value if there is no row.
    QByteArray value(const QString& sql) const;
    /// Waits for the result of a COPY that has been sent.
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
