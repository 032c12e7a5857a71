#pragma once

#include "platform/dao/engine/link.h"
#include "platform/dao/engine/session.h"
#include "platform/dao/engine/types.h"

namespace dao::postgres {

class PqConnection;

/// A store in a database on a PostgreSQL server. No statement stays open between two calls, so all
/// sessions of the process on the same store share one connection. A session in a transaction has a
/// connection of its own.
class PostgresSession final : public Session
{
public:
    /// Opens the store that the link file at the path names. Throws ConnectionFailed (3151) with
    /// the server and the reason, and UnrecognizedFormat (3343) if the encoding of the database is
    /// not UTF8.
    static std::unique_ptr<PostgresSession> open(const QString& path, const Link& link,
                                                 const Timeouts& timeouts);
    ~PostgresSession() override;

    QString place() const override { return link_.place(); }
    RowNumber insert(const TableInfo& table, const QString& sql,
                     const QVariantList& values) override;
    qint64 write(const QString& sql, const QVariantList& values) override;
    QString writeCondition() override;
    void begin() override;
    void beginSnapshot() override;
    std::vector<TableInfo> tables() override;
    std::optional<TableInfo> table(const QString& name) override;
    std::unique_ptr<Bulk> bulk() override;

    /// Returns one line for each connection of a station to the database, except for the connection
    /// of this session.
    QStringList otherStations();

protected:
    Answer execute(const QString& sql, const QVariantList& values) override;
    SchemaMemory& schema() override;
    QStringList markTableStatements() const override;

private:
    using Connection = std::shared_ptr<PqConnection>;

    PostgresSession(const QString& path, Link link, const Timeouts& timeouts);
    Connection logIn() const;
    Connection shared() const;
    bool takeUp();
    void requireTakenUp();
    void useOwnConnection();
    void recogniseStore();
    void markOlderStore();
    /// Returns the row id of the added row from the result of an INSERT. Throws StoreReplaced
    /// (3197) if the result is empty, because the condition of the INSERT (see writeCondition) was
    /// then false.
    RowNumber addedRow(const std::vector<StoredValues>& answer) const;
    void reconnect();
    void askAnew() const;
    /// Returns the tables and views with their fields.
    const std::vector<TableInfo>& knownTables();
    RowNumber insertWithToken(const TableInfo& table, const QString& sql,
                              const QVariantList& values, const QString& token);
    QString fateOf(const QString& token);
    void reconnectInTime();

    Connection connection_; ///< The connection of the open transaction, or the shared one.
    Link link_;
    Timeouts timeouts_;
    QString poolKey_;
};

} // namespace dao::postgres
