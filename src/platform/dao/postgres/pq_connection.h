#pragma once

#include "platform/dao/engine/connection_pool.h"
#include "platform/dao/engine/link.h"
#include "platform/dao/engine/types.h"
#include "platform/dao/postgres/pq_handle.h"

namespace dao::postgres {

/// A connection to a PostgreSQL server through libpq in non-blocking mode. Every call waits for the
/// socket with a deadline. If the server misses a deadline, the connection is closed. Values are
/// passed as parameters and never become part of the SQL text.
///
/// The functions throw CallFailed (3146) if the connection is lost, and the run-time error that
/// corresponds to an error of the server (see errorOf).
class PqConnection final : public EngineConnection
{
public:
    /// Logs in. Throws ConnectionFailed (3151) with the server's name and the reason.
    PqConnection(Link link, const Timeouts& timeouts);

    /// Executes a statement with the values of its parameters $1, $2 and so on. Throws
    /// DataTypeConversion (3421) for a text with a zero character, which the server cannot store.
    Answer execute(const QString& sql, const QVariantList& values = {});
    /// Executes a statement like execute, and prepares it on the server at its second use. If the
    /// tables of a prepared statement have changed, the statement fails and is executed again. Must
    /// not be used in a transaction, because the failure would abort the transaction.
    Answer executeKept(const QString& sql, const QVariantList& values);

    /// Prepares a statement without parameters under a name.
    void prepare(const QByteArray& name, const QString& sql, std::chrono::milliseconds patience);
    Answer executePrepared(const QByteArray& name, std::chrono::milliseconds patience);

    /// Returns true if the connection is lost, as far as it is known without sending anything.
    bool isLost();
    /// Returns true if the connection is in a transaction in which a statement has failed. Such a
    /// transaction can only be rolled back.
    bool hasFailedTransaction() const;
    /// Closes the connection. Later errors contain the reason.
    void abandon(const QString& reason);
    runtime::RunTimeError lossError(const QString& reason = {}) const;

    /// Starts COPY TO STDOUT or COPY FROM STDIN. Nothing else can be executed until it has ended.
    void startCopy(const QString& sql);
    /// Returns the next block of COPY TO STDOUT, or nothing after the last one. The block is valid
    /// until the next call.
    std::optional<QByteArrayView> nextCopied();
    /// Sends the next block of COPY FROM STDIN. The server may report an error only at a later
    /// call.
    void sendCopied(QByteArrayView block);
    /// Ends COPY FROM STDIN. If the caller passes a reason for cancelling, the server discards the
    /// rows, and no error is thrown.
    void endCopy(const char* refusal = nullptr);

    /// Returns true if the server has answered since control last returned to the event loop.
    bool hasJustAnswered() const { return hasJustAnswered_; }
    void setJustAnswered(bool just) { hasJustAnswered_ = just; }

    /// True if the server stores a token with each added row (see row_tokens.h).
    bool usesTokens() const { return usesTokens_; }
    void setUsesTokens(bool uses) { usesTokens_ = uses; }
    /// The token of the last row that the server confirmed; empty before the first one.
    const QString& lastToken() const { return lastToken_; }
    void setLastToken(const QString& token) { lastToken_ = token; }

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
    /// Maps an SQL text to the name of its prepared statement. A text that was used only once is
    /// not prepared yet and has an empty name.
    std::map<QString, QByteArray> kept_;
    int keptCount_ = 0;
    Memory copied_;
    bool hasJustAnswered_ = false;
    bool usesTokens_ = false;
    QString lastToken_;
};

/// Returns the run-time error that corresponds to an error of the server with this SQLSTATE.
runtime::RunTimeError errorOf(const QString& state, const QString& text, const Link& link);

} // namespace dao::postgres
