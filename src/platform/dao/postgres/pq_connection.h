#pragma once

#include "platform/dao/engine/connection_pool.h"
#include "platform/dao/engine/link.h"
#include "platform/dao/engine/types.h"
#include "platform/dao/postgres/pq_handle.h"

namespace dao::postgres {

/// A connection to a PostgreSQL server through libpq in non-blocking mode. Every function waits for
/// the server until a deadline. If the server misses the deadline, the connection is closed. Values
/// are passed as parameters and never become part of the SQL text.
///
/// The functions throw CallFailed (3146) if the connection is lost. If the server reports an error,
/// they throw the run-time error that errorOf returns.
class PqConnection final : public EngineConnection
{
public:
    /// Logs in to a server. Throws ConnectionFailed (3151) with the server's name and the reason.
    PqConnection(Link link, const Timeouts& timeouts);

    /// Executes a statement with the values of its parameters $1, $2 and so on. Throws
    /// DataTypeConversion (3421) for a text that contains the character U+0000, which the server
    /// cannot store.
    Answer execute(const QString& sql, const QVariantList& values = {});
    /// Executes a statement like execute, and prepares the statement on the server at its second
    /// use. If the tables of a prepared statement have changed, the prepared statement fails, and
    /// the function executes the statement again unprepared. Must not be used in a transaction,
    /// because the failure would abort the transaction.
    Answer executeKept(const QString& sql, const QVariantList& values);

    /// Prepares a statement without parameters on the server, under a name for executePrepared.
    void prepare(const QByteArray& name, const QString& sql, std::chrono::milliseconds patience);
    Answer executePrepared(const QByteArray& name, std::chrono::milliseconds patience);

    /// Returns true if the connection is known to be lost. The function sends nothing to the
    /// server.
    bool isLost();
    /// Returns true if the connection is in a transaction in which a statement has failed. Such a
    /// transaction can only be rolled back.
    bool hasFailedTransaction() const;
    /// Closes the connection. The text `reason` says why, and the errors of later calls contain it.
    void abandon(const QString& reason);
    runtime::RunTimeError lossError(const QString& reason = {}) const;

    /// Starts a COPY TO STDOUT or COPY FROM STDIN. The connection can execute nothing else until
    /// the COPY has ended.
    void startCopy(const QString& sql);
    /// Returns the next block of data from a COPY TO STDOUT, or nothing after the last block. The
    /// block is valid until the next call of this function.
    std::optional<QByteArrayView> nextCopied();
    /// Sends the next block of data to a COPY FROM STDIN. If the server refuses the block, a later
    /// call may be the one that throws the error.
    void sendCopied(QByteArrayView block);
    /// Ends a COPY FROM STDIN. If `refusal` is not null, cancels the COPY with this text as the
    /// reason. The server then discards the rows and reports an error, which is ignored.
    void endCopy(const char* refusal = nullptr);

    /// Returns true if the server has answered since control last returned to the event loop.
    bool hasJustAnswered() const { return hasJustAnswered_; }
    void setJustAnswered(bool just) { hasJustAnswered_ = just; }

    /// True if the server stores a token with each added row (see row_tokens.h).
    bool usesTokens() const { return usesTokens_; }
    void setUsesTokens(bool uses) { usesTokens_ = uses; }
    /// The token (a random text that is stored with an added row) of the last row that was added on
    /// this connection and confirmed by the server. The token is empty if there is no such row.
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
    /// Maps the text of an SQL statement, preceded by its parameter types, to the name of the
    /// prepared statement. The name is empty as long as the statement was used only once, because
    /// it is then not prepared.
    std::map<QString, QByteArray> kept_;
    int keptCount_ = 0;
    Memory copied_;
    bool hasJustAnswered_ = false;
    bool usesTokens_ = false;
    QString lastToken_;
};

/// Returns the run-time error for a server error with the SQLSTATE `state` and the message `text`.
runtime::RunTimeError errorOf(const QString& state, const QString& text, const Link& link);

} // namespace dao::postgres
