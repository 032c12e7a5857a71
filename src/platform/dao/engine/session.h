#pragma once

#include "platform/dao/engine/bulk.h"
#include "platform/dao/engine/dialect.h"
#include "platform/dao/engine/store_mark.h"
#include "platform/runtime/run_time_error.h"

#include <map>
#include <memory>
#include <optional>

namespace dao {

/// A cache of a store's schema. It is valid until the store's schema mark, which changes with every
/// change of a table or index, differs from `mark`.
struct SchemaMemory
{
    QString mark;
    std::optional<std::vector<TableInfo>> all;
    std::map<QString, std::optional<TableInfo>> tables;
    std::map<QString, std::vector<IndexInfo>> indexes;
    /// The mark of a store on a server. A restore there changes the schema, too.
    std::optional<StoreMark> storeMark;
    bool cannotMark = false; ///< True if the server has refused to create the table of the mark.
};

/// The result of a statement.
struct Answer
{
    std::vector<StoredValues> rows;
    qint64 affected = 0; ///< Rows that were inserted, changed or deleted.
};

/// Executes statements on a store for one Database. Statements may have parameters $1, $2 and so
/// on. Every function throws the run-time error that corresponds to the engine's error.
class Session
{
public:
    virtual ~Session() = default;
    Q_DISABLE_COPY_MOVE(Session)

    /// Returns the path with which the store was opened.
    const QString& name() const { return name_; }
    /// Returns the store's location for messages.
    virtual QString place() const { return name_; }
    const Dialect& dialect() const { return dialect_; }
    /// Returns the SQL expression for the row id of the table's rows. Throws UnrecognizedFormat
    /// (3343) for a table without row ids.
    QString rowNumber(const TableInfo& table) const;

    /// Executes one statement and returns the number of rows that it has changed.
    qint64 run(const QString& sql, const QVariantList& values = {});
    void runAll(const QStringList& statements);
    /// Executes one statement and returns all rows of its result.
    std::vector<StoredValues> rows(const QString& sql, const QVariantList& values = {});
    /// Executes an UPDATE or DELETE of rows and returns the number of changed rows. Throws
    /// StoreReplaced (3197) and writes nothing if the store is not the one that this process opened
    /// first.
    virtual qint64 write(const QString& sql, const QVariantList& values) = 0;
    /// Returns the condition that has to be part of every statement that writes rows, if the engine
    /// compares the store's mark in the statement itself. Returns an empty text for other engines.
    virtual QString writeCondition() { return {}; }
    /// Executes an INSERT into the table and returns the id of the new row. Throws like write.
    virtual RowNumber insert(const TableInfo& table, const QString& sql,
                             const QVariantList& values) = 0;

    /// Starts a transaction that can write.
    virtual void begin() = 0;
    /// Starts a transaction that only reads. Until it ends, it sees the store as it was when this
    /// function was called. It has no time limit.
    virtual void beginSnapshot() = 0;
    void commit();
    void rollback();
    bool inTransaction() const { return inTransaction_; }

    /// Returns the tables and views in the order of creation, without their fields.
    virtual std::vector<TableInfo> tables() = 0;
    /// Returns a table or view with its fields, by its case-insensitive name.
    virtual std::optional<TableInfo> table(const QString& name) = 0;
    /// Returns a table or view like table(). Throws TableNotFound (3078) if there is none.
    TableInfo expectTable(const QString& name);
    /// Returns the indexes of a table: first the primary key, then the others in the order of
    /// creation.
    const std::vector<IndexInfo>& indexes(const QString& table);

    /// Reads the store's mark. A store that an older version made has an empty one.
    StoreMark storedMark();
    /// Throws StoreReplaced (3197) if the store's mark is not the one that this process saw first.
    void requireExpectedMark() { recognise(storedMark()); }
    /// Stores a mark in place of the present one, within the open transaction.
    void storeMark(const StoreMark& mark);

    /// Returns an object that reads, copies and examines whole tables. The session must outlive it.
    virtual std::unique_ptr<Bulk> bulk() = 0;

protected:
    Session(QString name, const Dialect& dialect) : name_(std::move(name)), dialect_(dialect) {}
    virtual Answer execute(const QString& sql, const QVariantList& values) = 0;
    virtual SchemaMemory& schema() = 0;
    void setInTransaction() { inTransaction_ = true; }
    /// Compares the store's mark with the one that this process saw first at the path. Throws
    /// StoreReplaced (3197) if they differ. The mark that a store of an older version gets later
    /// is accepted, too.
    void recognise(const StoreMark& stored);
    runtime::RunTimeError replacedError() const;
    /// Returns the mark that the store must have. The first call for a path stores `seen` as this
    /// mark.
    StoreMark expectedMark(const StoreMark& seen = {}) const;
    /// Returns the statements that create the table of the mark.
    virtual QStringList markTableStatements() const;

private:
    QString name_;
    const Dialect& dialect_;
    bool inTransaction_ = false;
    std::optional<StoreMark> markToCommit_; ///< The mark stored within the open transaction.
};

/// Returns false for statements that only read or write rows.
bool mayChangeSchema(const QString& sql);

/// Groups statements so that they take effect together or not at all. If the session is already in
/// a transaction, the statements become part of it, and commit does nothing. Otherwise the
/// destructor rolls back unless commit has been called.
class Transaction
{
public:
    explicit Transaction(Session& session);
    ~Transaction();
    Q_DISABLE_COPY_MOVE(Transaction)
    void commit();

private:
    Session& session_;
    bool own_;
};

} // namespace dao
