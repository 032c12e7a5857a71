#pragma once

#include "platform/dao/engine/types.h"
#include "platform/runtime/run_time_error.h"

#include <QStringList>
#include <QVariant>

#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace dao {

/// What a row is told apart by inside the engine room: a number that the SQL engine keeps for each
/// row of a table, whatever its fields hold, ascending in the order in which rows were stored.
using RowNumber = qint64;
using RowNumbers = std::vector<RowNumber>;

/// The last number that a counter can give: the highest of a 32-bit field.
constexpr qint64 highestCounter = std::numeric_limits<qint32>::max();

/// The stored values of a row, one for each column asked for.
using StoredValues = std::vector<QVariant>;

/// What a statement has given.
struct Answer
{
    std::vector<StoredValues> rows;
    qint64 affected = 0; ///< Rows that were inserted, changed or deleted.
};

/// A table or view of the store.
struct TableInfo
{
    QString name;
    bool updatable = true;
    std::vector<FieldInfo> fields;
    bool numbered = true; ///< False where the engine cannot tell the table's rows apart.

    /// -1 where no field has the name (any case).
    int ordinalOf(const QString& fieldName) const;
};

/// What has been read of a store's schema, good for as long as the store's own mark of it stays.
struct SchemaMemory
{
    QString mark;
    std::optional<std::vector<TableInfo>> all;
    std::map<QString, std::optional<TableInfo>> tables;
    std::map<QString, std::vector<IndexInfo>> indexes;
    std::map<QString, QString> counters;
};

/// One connection to a store on one SQL engine. Kept in the pool, it outlives the database that has
/// opened it, and keeps what was read of the schema for the next one.
class EngineConnection
{
public:
    EngineConnection() { ++living_; }
    virtual ~EngineConnection() { --living_; }
    EngineConnection(const EngineConnection&) = delete;
    EngineConnection& operator=(const EngineConnection&) = delete;

    SchemaMemory& schema() { return *schema_; }
    /// Goes on with what another connection to the same store has read.
    void shareSchema(std::shared_ptr<SchemaMemory> schema) { schema_ = std::move(schema); }
    /// Forgets what is known of the schema, for this connection alone.
    void forgetSchema() { schema_ = std::make_shared<SchemaMemory>(); }

    /// How many connections the process has.
    static int living() { return living_; }

private:
    static inline int living_ = 0;
    std::shared_ptr<SchemaMemory> schema_ = std::make_shared<SchemaMemory>();
};

class RowStream;
class RowSink;

/// False for the statements that read and write rows.
bool mayChangeTheSchema(const QString& sql);

/// One open connection to a store on one SQL engine. What the engines have in common (plain SQL,
/// NULLS FIRST, quoted names) is done here and in TableRows; what one of them does in a way of its
/// own is virtual.
class Driver
{
public:
    virtual ~Driver() = default;
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;

    /// The path or the like that the store was opened by.
    const QString& name() const { return name_; }
    /// The store's place as a person is told of it.
    virtual QString place() const { return name_; }

    /// The tables and views in the order of creation, without their fields.
    virtual std::vector<TableInfo> tables() = 0;
    /// A table or view with its fields, by its name in any case.
    virtual std::optional<TableInfo> table(const QString& name) = 0;
    /// The primary key first, then the others in the order of creation.
    virtual std::vector<IndexInfo> indexes(const QString& table) = 0;

    /// The expression that gives the number of the table's rows. Raises 3343 where the engine
    /// cannot tell them apart.
    virtual QString rowNumber(const TableInfo& table) const = 0;
    /// What a field's column is ordered and compared by: texts by their code points.
    virtual QString sorted(const FieldInfo&, const QString& column) const { return column; }
    /// Runs an INSERT into the table and gives the new row's number.
    virtual RowNumber insert(const TableInfo& table, const QString& sql,
                             const QVariantList& values) = 0;
    /// A statement whose one row and column joins the only column of the ordered SELECT with
    /// commas; Null where there is no row.
    virtual QString joined(const QString& select) const = 0;
    /// The expression of the first number of a text that was joined so.
    virtual QString firstOf(const QString& joined) const = 0;
    /// The expression that an INSERT gives to an unassigned counter; empty where the store counts
    /// by itself.
    virtual QString counterValue(const QString& table, const QString& field) = 0;
    /// The expression that an INSERT gives to the row number, so that no number comes twice; empty
    /// where the engine sees to that by itself or cannot.
    virtual QString newRowNumber(const TableInfo&) { return {}; }

    virtual QStringList createTable(const TableInfo& table,
                                    const std::vector<IndexInfo>& indexes) const = 0;
    virtual QString createIndex(const QString& table, const IndexInfo& index) const = 0;
    virtual QStringList addField(const QString& table, const FieldInfo& field) const = 0;

    /// Opens a transaction that may write.
    virtual void begin() = 0;
    void commit();
    void rollback();
    bool inTransaction() const { return inTransaction_; }

    /// What the engine's own examination finds wrong with the store, a line for each; it reads the
    /// whole store.
    virtual QStringList integrityFindings() = 0;

    /// Writes the whole store, as it stands at one moment, to the path, in place of what is there,
    /// and has it on the disk when it returns. Other stations may read meanwhile; one that writes
    /// waits. Not while this process has another connection to the store. Raises 3260, 3026, 3043,
    /// 3051.
    virtual void copyTo(const QString& path) = 0;

    /// Opens a transaction that sees the store as it stands at this moment and changes nothing, for
    /// as long as it takes.
    virtual void beginReading() = 0;
    /// All rows of a table, one after the other. One stream at a time; nothing else is run on the
    /// connection while it lives.
    virtual std::unique_ptr<RowStream> rowStream(const TableInfo& table) = 0;
    /// A way to store many rows in a table that was made in the open transaction. As a stream, it
    /// has the connection for itself.
    virtual std::unique_ptr<RowSink> rowSink(const TableInfo& table) = 0;
    /// The number that a counter has reached, 0 for none given yet; empty where the store lacks
    /// what keeps the counter.
    virtual std::optional<qint64> counterMark(const QString& table, const QString& field) = 0;
    /// The highest number that a counter is known to have given; 0 for none.
    virtual qint64 highestGiven(const QString& table, const QString& field) = 0;
    /// Lets a counter go on after the number.
    virtual void countOnFrom(const QString& table, const QString& field, qint64 highest) = 0;
    /// Tells the engine that a table has got many rows.
    virtual void learnContents(const QString&) {}
    /// Puts tables out of the store and gives the name of the place where they are kept.
    virtual QString setAside(const QStringList& tables) = 0;

    /// Runs one statement with the values of its parameters $1, $2 and so on, and gives the number
    /// of rows that it has changed.
    qint64 run(const QString& sql, const QVariantList& values = {});
    /// All rows that a statement gives.
    std::vector<StoredValues> rows(const QString& sql, const QVariantList& values = {});
    /// The row numbers in a text that joins them with commas.
    static RowNumbers rowNumbers(const QString& joined);

    /// A name as SQL takes it whatever it is made of.
    static QString quoted(const QString& name);
    static QString quoted(const QStringList& names);

protected:
    explicit Driver(QString name) : name_(std::move(name)) {}
    /// Runs one statement to its end. Throws the run-time error that a failure stands for.
    virtual Answer execute(const QString& sql, const QVariantList& values) = 0;
    void setInTransaction() { inTransaction_ = true; }

private:
    QString name_;
    bool inTransaction_ = false;
};

/// Several statements that take effect together or not at all; part of a transaction that is
/// already open, where there is one.
class Together
{
public:
    explicit Together(Driver& driver);
    ~Together();
    Together(const Together&) = delete;
    Together& operator=(const Together&) = delete;
    void commit();

private:
    Driver& driver_;
    bool own_;
};

} // namespace dao
