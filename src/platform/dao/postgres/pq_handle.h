#pragma once

#include "platform/dao/postgres/pq_library.h"

#include <QString>

#include <chrono>
#include <memory>

namespace dao::postgres {

/// The time at which a wait ends.
class Deadline
{
    using Clock = std::chrono::steady_clock;

public:
    explicit Deadline(std::chrono::milliseconds patience)
        : patience_(patience), end_(Clock::now() + patience)
    {
    }

    Clock::time_point end() const { return end_; }
    /// Returns the time that remains until the deadline. The result is zero or negative after the
    /// deadline.
    std::chrono::milliseconds left() const
    {
        return std::chrono::ceil<std::chrono::milliseconds>(end_ - Clock::now());
    }
    /// Returns the error message for a server that has not answered before the deadline.
    QString message() const
    {
        return QStringLiteral("no answer within %1 s")
            .arg(std::chrono::ceil<std::chrono::seconds>(patience_).count());
    }

private:
    std::chrono::milliseconds patience_;
    Clock::time_point end_;
};

struct ConnectionCloser
{
    void operator()(PGconn* connection) const { PQ(finish)(connection); }
};
using ConnectionHandle = std::unique_ptr<PGconn, ConnectionCloser>;

struct ResultCloser
{
    void operator()(PGresult* result) const { PQ(clear)(result); }
};
using Result = std::unique_ptr<PGresult, ResultCloser>;

struct MemoryCloser
{
    void operator()(char* memory) const { PQ(freemem)(memory); }
};
using Memory = std::unique_ptr<char, MemoryCloser>;

enum class Readiness { ToRead, ToWrite, ToReadOrWrite };

/// Waits until the socket of the connection can be read or written, as `readiness` specifies, or
/// has failed. Returns false if the deadline passes first.
bool waitFor(const PGconn* connection, Readiness readiness, const Deadline& deadline);

} // namespace dao::postgres
