#pragma once

#include "platform/dao/engine/session.h"
#include "platform/dao/sqlite/sqlite_connection.h"

#include <chrono>

namespace dao::sqlite {

/// A store in one SQLite file. The destructor returns the connection to the pool if the connection
/// works.
class SqliteSession final : public Session
{
public:
    /// Opens an existing store. Throws DatabaseFileNotFound (3024), PermissionDenied (3051),
    /// UnrecognizedFormat (3343), CorruptDatabase (3049), Locked (3260), and StoreReplaced (3197)
    /// if the store is not the one that this process opened first at the path.
    static std::unique_ptr<Session> open(const QString& path, std::chrono::milliseconds lockWait);
    /// Creates an empty store in a new file and opens the store. Throws DatabaseExists (3204) if
    /// the file exists, and DatabaseFileNotFound (3024) if the file cannot be created.
    static std::unique_ptr<Session> create(const QString& path, std::chrono::milliseconds lockWait);
    ~SqliteSession() override;

    RowNumber insert(const TableInfo& table, const QString& sql,
                     const QVariantList& values) override;
    qint64 write(const QString& sql, const QVariantList& values) override;
    void begin() override;
    void beginSnapshot() override;
    std::vector<TableInfo> tables() override;
    std::optional<TableInfo> table(const QString& name) override;
    std::unique_ptr<Bulk> bulk() override;

protected:
    Answer execute(const QString& sql, const QVariantList& values) override;
    SchemaMemory& schema() override { return connection_->schema(); }

private:
    SqliteSession(std::shared_ptr<SqliteConnection> connection, const QString& path);
    void connect(const QString& mode, std::chrono::milliseconds lockWait);
    void prepareUse();
    void requireDurableCommits(QSqlQuery& settings) const;
    void renewUse();
    QString schemaMark();
    void requireSameFile() const;
    QSqlQuery& start(const QString& sql, const QVariantList& values);
    [[noreturn]] void fail(const QString& sql, const QSqlQuery& query);
    runtime::RunTimeError openingError(const QSqlError& error) const;

    std::shared_ptr<SqliteConnection> connection_;
    bool hasFailed_ = false;
    QString poolKey_;      ///< Empty if the connection must not be returned to the pool.
    QString fileIdentity_; ///< Identifies the file that the connection has open.
};

} // namespace dao::sqlite
