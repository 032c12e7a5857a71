#pragma once

#include "platform/dao/types.h"
#include "platform/runtime/run_time_error.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>

#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <vector>

class QSqlError;

namespace dao {

/// What a row is told apart by inside the engine room: a number that the SQL engine keeps for each
/// row of a table, whatever its fields hold, ascending in the order in which rows were stored.
using RowNumber = qint64;
using RowNumbers = std::vector<RowNumber>;

/// The last number that a counter can give: the highest of a 32-bit field.
constexpr qint64 highestCounter = std::numeric_limits<qint32>::max();

/// The stored values of a row, one for each column asked for.
using StoredValues = std::vector<QVariant>;

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

/// One connection of Qt Sql under a name of its own; the connection goes with this object. It keeps
/// its prepared statements and what was read of the schema, for the next database that works over
/// it.
class SqlConnection
{
public:
    explicit SqlConnection(const QString& plugin);
    ~SqlConnection();
    SqlConnection(const SqlConnection&) = delete;
    SqlConnection& operator=(const SqlConnection&) = delete;

    QSqlDatabase& database() { return database_; }
    SchemaMemory& schema() { return *schema_; }
    /// Why the connection was ended from this side; empty where it was not.
    const QString& lossReason() const { return lossReason_; }
    void setLossReason(const QString& reason) { lossReason_ = reason; }
    /// Goes on with what another connection to the same store has read.
    void shareSchema(std::shared_ptr<SchemaMemory> schema) { schema_ = std::move(schema); }
    /// Forgets what is known of the schema, for this connection alone.
    void forgetSchema() { schema_ = std::make_shared<SchemaMemory>(); }
    /// The statement ready to be bound and run. A text that may change the schema is prepared for
    /// this one time, and what is known of the schema is forgotten.
    QSqlQuery& statement(const QString& sql);
    /// A statement that is run this one time and not prepared.
    QSqlQuery& passing();
    /// Lets go of a statement that has failed.
    void drop(const QString& sql);
    /// The names under which a server keeps statements for this connection, by their texts; empty
    /// for one that has come once.
    std::map<QString, QString>& serverStatements() { return serverStatements_; }
    int nextStatementNumber() { return ++statementNumber_; }
    /// Whether a server has answered on it since the program last waited for an event.
    bool hasJustAnswered() const { return hasJustAnswered_; }
    void setJustAnswered(bool just) { hasJustAnswered_ = just; }

private:
    QString name_;
    QSqlDatabase database_;
    std::map<QString, QSqlQuery> statements_;
    QSqlQuery passing_;
    std::map<QString, QString> serverStatements_;
    int statementNumber_ = 0;
    bool hasJustAnswered_ = false;
    std::shared_ptr<SchemaMemory> schema_ = std::make_shared<SchemaMemory>();
    QString lossReason_;
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
    /// What a field's column is selected by, so that its value comes as it is stored.
    virtual QString selected(const FieldInfo&, const QString& column) const { return column; }
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

    /// The run-time error that an error of the engine stands for.
    virtual runtime::RunTimeError error(const QSqlError& error) const = 0;

    /// Runs one statement to its end, unless it gives rows. The query stays good until the next
    /// call. Raises error().
    const QSqlQuery& run(const QString& sql, const QVariantList& values = {});
    /// All rows of a statement, which is finished afterwards.
    std::vector<StoredValues> rows(const QString& sql, const QVariantList& values = {});
    /// The row numbers in a text that joins them with commas.
    static RowNumbers rowNumbers(const QString& joined);

    /// A name as SQL takes it whatever it is made of.
    static QString quoted(const QString& name);
    static QString quoted(const QStringList& names);

protected:
    Driver(std::shared_ptr<SqlConnection> connection, QString name)
        : connection_(std::move(connection)), name_(std::move(name))
    {
    }
    QSqlDatabase& connection() { return connection_->database(); }
    SqlConnection& sqlConnection() const { return *connection_; }
    SchemaMemory& schema() { return connection_->schema(); }
    /// Goes on over another connection.
    void setConnection(std::shared_ptr<SqlConnection> connection);
    const std::shared_ptr<SqlConnection>& heldConnection() const { return connection_; }
    /// Runs a statement and gives its query, whose lastError tells of a failure.
    virtual QSqlQuery& execute(const QString& sql, const QVariantList& values);
    virtual int columnCount(const QSqlQuery& query) const;
    /// The connection for another use; null where it has failed or is in the middle of something.
    std::shared_ptr<SqlConnection> releaseConnection();
    void setInTransaction() { inTransaction_ = true; }

private:
    QSqlQuery& start(const QString& sql, const QVariantList& values);

    std::shared_ptr<SqlConnection> connection_;
    QString name_;
    bool inTransaction_ = false;
    bool failed_ = false;
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
