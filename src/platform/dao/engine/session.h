#pragma once

#include "platform/dao/engine/bulk.h"
#include "platform/dao/engine/dialect.h"
#include "platform/runtime/run_time_error.h"

#include <map>
#include <memory>
#include <optional>

namespace dao {

/// What has been read of a store's schema, valid for as long as the store's own mark of it stays.
struct SchemaMemory
{
    QString mark;
    std::optional<std::vector<TableInfo>> all;
    std::map<QString, std::optional<TableInfo>> tables;
    std::map<QString, std::vector<IndexInfo>> indexes;
};

/// What a statement has given.
struct Answer
{
    std::vector<StoredValues> rows;
    qint64 affected = 0; ///< Rows that were inserted, changed or deleted.
};

/// A database's work with a store on one engine. Statements take the values of their parameters $1,
/// $2 and so on. Every function throws the run-time error that an engine's failure stands for.
class Session
{
public:
    virtual ~Session() = default;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// The path that the store was opened by.
    const QString& name() const { return name_; }
    /// The store's place as a user is told of it.
    virtual QString place() const { return name_; }
    const Dialect& dialect() const { return dialect_; }
    /// The expression for the row id of the table's rows. Throws UnrecognizedFormat (3343) for a
    /// table without row ids.
    QString rowNumber(const TableInfo& table) const;

    /// Runs one statement and gives the number of rows that it has changed.
    qint64 run(const QString& sql, const QVariantList& values = {});
    /// All rows that a statement gives.
    std::vector<StoredValues> rows(const QString& sql, const QVariantList& values = {});
    /// Runs an INSERT into the table and gives the new row's id.
    virtual RowNumber insert(const TableInfo& table, const QString& sql,
                             const QVariantList& values) = 0;

    /// Opens a transaction that may write.
    virtual void begin() = 0;
    /// Opens a transaction that sees the store as it is at this moment and changes nothing, for as
    /// long as it takes.
    virtual void beginSnapshot() = 0;
    void commit();
    void rollback();
    bool inTransaction() const { return inTransaction_; }

    /// The tables and views in the order of creation, without their fields.
    virtual std::vector<TableInfo> tables() = 0;
    /// A table or view with its fields, by its name in any case.
    virtual std::optional<TableInfo> table(const QString& name) = 0;
    /// The primary key first, then the others in the order of creation.
    const std::vector<IndexInfo>& indexes(const QString& table);

    /// Reading, copying and examining whole tables. Valid for as long as the session.
    virtual std::unique_ptr<Bulk> bulk() = 0;

protected:
    Session(QString name, const Dialect& dialect) : name_(std::move(name)), dialect_(dialect) {}
    virtual Answer execute(const QString& sql, const QVariantList& values) = 0;
    virtual SchemaMemory& schema() = 0;
    void setInTransaction() { inTransaction_ = true; }

private:
    QString name_;
    const Dialect& dialect_;
    bool inTransaction_ = false;
};

/// False for statements that read and write rows.
bool mayChangeSchema(const QString& sql);

/// Several statements that take effect together or not at all; part of the transaction that is
/// already open, if there is one. Rolls back if it goes without commit.
class Transaction
{
public:
    explicit Transaction(Session& session);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void commit();

private:
    Session& session_;
    bool own_;
};

} // namespace dao
