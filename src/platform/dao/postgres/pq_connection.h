#pragma once

#include "platform/dao/engine/connection.h"
#include "platform/dao/engine/timeouts.h"
#include "platform/dao/postgres/link.h"
#include "platform/dao/postgres/pq_handle.h"

namespace dao::postgres {

/// One connection to a PostgreSQL server, over the client library in non-blocking mode. Every call
/// returns within a known time: it waits for the socket with a deadline, and a connection that
/// misses a deadline is closed. Values travel as parameters and never become SQL text.
///
/// The functions throw CallFailed (3146) if the connection is or gets lost, and the error that a
/// failure on the server stands for (see errorOf).
class PqConnection final : public EngineConnection
{
public:
    /// Logs in. Throws ConnectionFailed (3151) with the server's name and the reason.
    PqConnection(Link link, const Timeouts& timeouts);

    /// Runs a statement with the values of its parameters $1, $2 and so on. Throws
    /// DataTypeConversion (3421) for a text with a zero character, which no server stores.
    Answer execute(const QString& sql, const QVariantList& values = {});
    /// The same; from the second time on the server keeps the statement prepared. Not for use in a
    /// transaction, because a statement that no longer fits its tables is run a second time.
    Answer executeKept(const QString& sql, const QVariantList& values);

    /// Prepares a statement without parameters under a name.
    void prepare(const QByteArray& name, const QString& sql, std::chrono::milliseconds patience);
    Answer executePrepared(const QByteArray& name, std::chrono::milliseconds patience);

    /// True if the connection is known to be lost. Reads what the server has sent by itself and
    /// sends nothing.
    bool isLost();
    /// True in a transaction that can only be rolled back.
    bool hasFailedTransaction() const;
    /// Closes the connection. The reason is part of every later error.
    void abandon(const QString& reason);
    runtime::RunTimeError lossError(const QString& reason = {}) const;

    /// Starts COPY TO STDOUT or COPY FROM STDIN. Nothing else can be run before it has ended.
    void startCopy(const QString& sql);
    /// The next block of COPY TO STDOUT, valid until the next call; nothing after the last one.
    std::optional<QByteArrayView> nextCopied();
    /// The next block of COPY FROM STDIN. The server may report a failure later than it happens.
    void sendCopied(QByteArrayView block);
    /// Ends COPY FROM STDIN. With a reason, the server refuses the rows and no error is thrown.
    void endCopy(const char* refusal = nullptr);

    /// Whether the server has answered since the program last waited for an event.
    bool hasJustAnswered() const { return hasJustAnswered_; }
    void setJustAnswered(bool just) { hasJustAnswered_ = just; }

private:
    void await(Readiness readiness, const Deadline& deadline);
    void flush(const Deadline& deadline);
    Result nextResult(const Deadline& deadline);
    Result lastResult(bool isSent, std::chrono::milliseconds patience);
    Answer answerOf(const Result& result);
    [[noreturn]] void fail(const PGresult* result);

    Link link_;
    Timeouts timeouts_;
    ConnectionHandle handle_;
    QString lossReason_;
    std::map<QString, QByteArray> kept_; ///< Names of prepared statements; empty after one use.
    int keptCount_ = 0;
    Memory copied_;
    bool hasJustAnswered_ = false;
};

/// The run-time error that an error of the server stands for, by its SQLSTATE.
runtime::RunTimeError errorOf(const QString& state, const QString& text, const Link& link);

} // namespace dao::postgres
