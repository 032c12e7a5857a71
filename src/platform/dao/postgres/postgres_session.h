#pragma once

#include "platform/dao/engine/session.h"
#include "platform/dao/engine/timeouts.h"
#include "platform/dao/postgres/link.h"

namespace dao {

namespace postgres {
class PqConnection;
}

/// A store in a database on a PostgreSQL server. Nothing stays open between two calls, so all the
/// databases that a process has open on one store share a connection; a transaction has one of its
/// own.
class PostgresDriver final : public Driver
{
public:
    /// Opens the store that the link at the path names. Raises 3151 with the server and the reason
    /// where it cannot be reached, 3343 for a database that cannot hold a store.
    static std::unique_ptr<Driver> open(const QString& path, const Link& link, const Waits& waits);

    ~PostgresDriver() override;

    QString place() const override { return link_.place(); }
    std::vector<TableInfo> tables() override;
    std::optional<TableInfo> table(const QString& name) override;
    std::vector<IndexInfo> indexes(const QString& table) override;
    QString rowNumber(const TableInfo& table) const override;
    QString sorted(const FieldInfo& field, const QString& column) const override;
    RowNumber insert(const TableInfo& table, const QString& sql,
                     const QVariantList& values) override;
    QString joined(const QString& select) const override;
    QString firstOf(const QString& joined) const override;
    QString counterValue(const QString& table, const QString& field) override;
    QStringList createTable(const TableInfo& table,
                            const std::vector<IndexInfo>& indexes) const override;
    QString createIndex(const QString& table, const IndexInfo& index) const override;
    QStringList addField(const QString& table, const FieldInfo& field) const override;
    void begin() override;
    QStringList integrityFindings() override;
    void copyTo(const QString& path) override;
    void beginReading() override;
    std::unique_ptr<RowStream> rowStream(const TableInfo& table) override;
    std::unique_ptr<RowSink> rowSink(const TableInfo& table) override;
    std::optional<qint64> counterMark(const QString& table, const QString& field) override;
    qint64 highestGiven(const QString& table, const QString& field) override;
    void countOnFrom(const QString& table, const QString& field, qint64 highest) override;
    void learnContents(const QString& table) override;
    QString setAside(const QStringList& tables) override;

protected:
    Answer execute(const QString& sql, const QVariantList& values) override;

private:
    using Connection = std::shared_ptr<postgres::PqConnection>;

    PostgresDriver(Connection connection, const QString& path, Link link, const Waits& waits);
    SchemaMemory& schema();
    Connection logIn() const;
    Connection shared() const;
    bool takeUp();
    void requireTakenUp();
    void goOnAnew();
    void askAnew() const;
    const std::vector<TableInfo>& knownTables();

    Connection connection_;
    Link link_;
    Waits waits_;
    QString poolKey_;
};

} // namespace dao
