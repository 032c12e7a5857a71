#pragma once

#include "platform/dao/engine/session.h"
#include "platform/dao/sqlite/sqlite_connection.h"

#include <chrono>

namespace dao {

/// A store in one SQLite file.
class SqliteDriver final : public Driver
{
public:
    /// Opens an existing store. Raises 3024, 3051, 3343, 3049, 3260.
    static std::unique_ptr<Driver> open(const QString& path, std::chrono::milliseconds lockWait);
    /// Makes an empty store and opens it. Raises 3204, 3051.
    static std::unique_ptr<Driver> create(const QString& path, std::chrono::milliseconds lockWait);
    ~SqliteDriver() override;

    std::vector<TableInfo> tables() override;
    std::optional<TableInfo> table(const QString& name) override;
    std::vector<IndexInfo> indexes(const QString& table) override;
    QString rowNumber(const TableInfo& table) const override;
    RowNumber insert(const TableInfo& table, const QString& sql,
                     const QVariantList& values) override;
    QString joined(const QString& select) const override;
    QString firstOf(const QString& joined) const override;
    QString counterValue(const QString& table, const QString& field) override;
    QString newRowNumber(const TableInfo& table) override;
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
    QString setAside(const QStringList& tables) override;
    /// The run-time error that an error of the engine stands for.
    runtime::RunTimeError error(const QSqlError& error) const;

protected:
    Answer execute(const QString& sql, const QVariantList& values) override;

private:
    SqliteDriver(std::shared_ptr<SqliteConnection> connection, const QString& path);
    QSqlDatabase& connection() { return connection_->database(); }
    SchemaMemory& schema() { return connection_->schema(); }
    QSqlQuery& start(const QString& sql, const QVariantList& values);
    [[noreturn]] void fail(const QString& sql, const QSqlQuery& query);
    void connect(const QString& mode, std::chrono::milliseconds lockWait);
    void prepareUse();
    void renewUse();
    QString schemaMark();
    std::optional<TableInfo> readTable(const QString& name);
    std::vector<IndexInfo> readIndexes(const QString& table);
    bool exists(const QString& type, const QString& name);
    std::optional<qint64> storedMark(const QString& table);
    QString readCounterValue(const QString& table, const QString& field);
    runtime::RunTimeError openingError(const QSqlError& error) const;

    std::shared_ptr<SqliteConnection> connection_;
    bool hasFailed_ = false;
    QString poolKey_; ///< Empty where the connection is not for another use.
};

} // namespace dao
