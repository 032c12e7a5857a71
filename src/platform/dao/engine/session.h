#pragma once

#include "platform/dao/engine/bulk.h"
#include "platform/dao/engine/dialect.h"
#include "platform/dao/engine/store_mark.h"
#include "platform/runtime/run_time_error.h"

#include <map>
#include <memory>
#include <optional>

namespace dao {

/// A cache of a store's schema. A store has a schema mark, a value that changes with every change
/// of a table or index. The cache is valid as long as the store's schema mark equals `mark`.
struct SchemaMemory
{
    QString mark;
    std::optional<std::vector<TableInfo>> all;
    std::map<QString, std::optional<TableInfo>> tables;
    std::map<QString, std::vector<IndexInfo>> indexes;
    /// The identifying mark of a store on a server (two random texts), cached together with the
    /// schema. A restore changes the mark and the schema, so the cache never keeps an old mark.
    std::optional<StoreMark> storeMark;
    bool cannotMark = false; ///< True if the server has refused to create the table of the mark.
};

/// The result of a statement.
struct Answer
{
    std::vector<StoredValues> rows;
    qint64 affected = 0; ///< Rows that were inserted, changed or deleted.
};

/// Executes statements on a store for one Database object. Statements may have parameters $1, $2
/// and so on. Every function throws the run-time error that corresponds to the error of the
/// database engine.
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
    /// Executes one statement and returns all rows of the result.
    std::vector<StoredValues> rows(const QString& sql, const QVariantList& values = {});
    /// Executes an UPDATE or DELETE and returns the number of changed rows. If the store at the
    /// path was replaced or restored after this process had opened it first, writes nothing and
    /// throws StoreReplaced (3197).
    virtual qint64 write(const QString& sql, const QVariantList& values) = 0;
    /// Returns an SQL condition that every statement that writes rows must contain. The condition
    /// is false if the store's identifying mark shows that the store was replaced or restored.
    /// Returns an empty text if the engine compares the mark outside of the statement.
    virtual QString writeCondition() { return {}; }
    /// Executes an INSERT into the table and returns the row id of the new row. Throws the same
    /// errors as write().
    virtual RowNumber insert(const TableInfo& table, const QString& sql,
                             const QVariantList& values) = 0;

    /// Starts a transaction that can write.
    virtual void begin() = 0;
    /// Starts a transaction that only reads. All statements of the transaction see the store as it
    /// was when this function was called. The transaction has no time limit.
    virtual void beginSnapshot() = 0;
    void commit();
    void rollback();
    bool inTransaction() const { return inTransaction_; }

    /// Returns the tables and views in the order of creation, without their fields.
    virtual std::vector<TableInfo> tables() = 0;
    /// Returns the table or view with this name, and its fields. The case of the name is ignored.
    /// Returns nothing if there is none.
    virtual std::optional<TableInfo> table(const QString& name) = 0;
    /// Returns the same as table(), but throws TableNotFound (3078) if there is no table or view
    /// with this name.
    TableInfo expectTable(const QString& name);
    /// Returns the indexes of a table: first the primary key, then the others in the order of
    /// creation.
    const std::vector<IndexInfo>& indexes(const QString& table);

    /// Reads the store's identifying mark, which is two random texts. The texts are empty if an
    /// older version of the program made the store without a mark.
    StoreMark storedMark();
    /// Reads the store's identifying mark. Throws StoreReplaced (3197) if the mark shows that the
    /// store was replaced or restored.
    void requireExpectedMark() { recognise(storedMark()); }
    /// Writes `mark` to the store as its new identifying mark, within the open transaction.
    void storeMark(const StoreMark& mark);

    /// Returns an object that reads, copies and examines whole tables. The session must outlive the
    /// object.
    virtual std::unique_ptr<Bulk> bulk() = 0;

protected:
    Session(QString name, const Dialect& dialect) : name_(std::move(name)), dialect_(dialect) {}
    virtual Answer execute(const QString& sql, const QVariantList& values) = 0;
    virtual SchemaMemory& schema() = 0;
    void setInTransaction() { inTransaction_ = true; }
    /// Checks the identifying mark that was read from the store. Throws StoreReplaced (3197) if
    /// this process expects another mark. If the store had no mark, because an older version of the
    /// program made it, a mark that a station has added since then is accepted.
    void recognise(const StoreMark& stored);
    runtime::RunTimeError replacedError() const;
    /// Returns the identifying mark (two random texts) that this process expects in the store. The
    /// first call for a path makes `seen`, the mark that was read from the store, the expected
    /// mark.
    StoreMark expectedMark(const StoreMark& seen = {}) const;
    /// Returns the statements that create the internal table for the store's identifying mark,
    /// which is two random texts.
    virtual QStringList markTableStatements() const;

private:
    QString name_;
    const Dialect& dialect_;
    bool inTransaction_ = false;
    std::optional<StoreMark> markToCommit_; ///< The mark stored within the open transaction.
};

/// Returns false if the SQL statement only reads or writes rows, and true for any other statement.
bool mayChangeSchema(const QString& sql);

/// Groups statements so that all of them take effect or none does. If the session is already in a
/// transaction, the statements become part of that transaction, and commit does nothing. Otherwise
/// the destructor rolls the transaction back unless commit has been called.
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
