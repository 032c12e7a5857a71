#pragma once

#include "platform/dao/engine/timeouts.h"
#include "platform/dao/engine/types.h"
#include "platform/dao/recordset.h"

#include <memory>
#include <vector>

namespace dao {

class Session;
class Database;

/// An index of a table definition.
class Index
{
public:
    explicit Index(IndexInfo info) : info_(std::move(info)) {}
    const QString& Name() const { return info_.name; }
    const QStringList& Fields() const { return info_.fields; }
    bool Primary() const { return info_.primary; }
    const IndexInfo& info() const { return info_; }

private:
    IndexInfo info_;
};

struct TableDefState;

/// A field of a table definition: either one of a table, or a new one created by
/// TableDef::CreateField.
class FieldDef
{
public:
    explicit FieldDef(FieldInfo info) : info_(std::move(info)) {}
    const QString& Name() const { return info_.name; }
    DataType Type() const { return info_.type; }
    int Size() const { return info_.size; }
    const FieldInfo& info() const { return info_; }

private:
    FieldInfo info_;
};

/// The indexes of a table: first the primary key, then the others in the order of creation.
class Indexes
{
public:
    explicit Indexes(std::shared_ptr<TableDefState> table) : table_(std::move(table)) {}
    int Count() const;
    /// Returns the index at a position or with a name. Throws ItemNotFound (3265) for an unknown
    /// one.
    Index operator()(int position) const;
    Index operator()(const QString& name) const;
    /// Adds an index. If the table is already appended, the index is created in the store
    /// immediately, otherwise together with the table. Throws ItemNotFound (3265) at that time if
    /// the table lacks a field of the index.
    void Append(const Index& index) const;

private:
    std::shared_ptr<TableDefState> table_;
};

/// The fields of a table definition, by position or by case-insensitive name.
class FieldDefs
{
public:
    explicit FieldDefs(std::shared_ptr<TableDefState> table) : table_(std::move(table)) {}
    int Count() const;
    /// Returns the field at a position or with a name. Throws ItemNotFound (3265) for an unknown
    /// one.
    FieldDef operator()(int position) const;
    FieldDef operator()(const QString& name) const;
    /// Adds a field. If the table is already appended, the field is created in the store
    /// immediately. Existing rows get Null, or False in a Boolean field. Throws FieldDefinedTwice
    /// (3191) if the name exists.
    void Append(const FieldDef& field) const;
    /// Removes the field from the table. If it was the last field, the table exists only in this
    /// definition until a field is appended.
    void Delete(const QString& name) const;

private:
    std::shared_ptr<TableDefState> table_;
};

/// The definition of a table, created by Database::CreateTableDef or obtained from TableDefs. All
/// handles for the same table of the same Database share their state.
class TableDef
{
public:
    const QString& Name() const;
    /// Returns false if the definition cannot be changed, as for a view.
    bool Updatable() const;
    FieldDefs Fields() const { return FieldDefs(state_); }
    dao::Indexes indexes() const { return dao::Indexes(state_); }
    /// Creates a field with this type and size. A text field of size 0 gets the default size 255.
    FieldDef CreateField(const QString& name, DataType type, int size = 0) const;
    /// Creates a counter: a whole number that the store assigns, starting with 1. The store never
    /// assigns a number twice, even if the row with the highest number has been deleted.
    FieldDef CreateCounter(const QString& name) const;

    explicit TableDef(std::shared_ptr<TableDefState> state) : state_(std::move(state)) {}

private:
    friend class TableDefs;
    std::shared_ptr<TableDefState> state_;
};

/// The tables of a Database.
class TableDefs
{
public:
    explicit TableDefs(Database& database) : database_(database) {}
    int Count() const;
    /// Returns a table by position in the order of creation, or by case-insensitive name. Throws
    /// ItemNotFound (3265).
    TableDef operator()(int position) const;
    TableDef operator()(const QString& name) const;
    /// Creates the table in the store.
    void Append(const TableDef& table) const;

private:
    Database& database_;
};

/// A handle on a store with its own connection. It is shared by the code that opened it and by all
/// its recordsets. The connection ends with the last of these references or with Close. After
/// Close, all its recordsets throw ObjectClosed (3420).
class Database : public std::enable_shared_from_this<Database>
{
public:
    explicit Database(std::unique_ptr<Session> session);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    const QString& Name() const;
    /// Returns the store's location for messages: the path, or the database and server.
    QString place() const;
    bool isOpen() const { return session_ != nullptr; }

    /// Opens a recordset. `source` is a table name (type dbOpenTable or dbOpenDynaset) or, for a
    /// dynaset, a query of the form SELECT * FROM table [WHERE field = number] [ORDER BY field
    /// [ASC]]. Throws TableNotFound (3078), TooFewParameters (3061) for an unknown field,
    /// QuerySyntax (3131) for any other query, OperationNotSupported (3251) for a query with
    /// dbOpenTable, and ObjectClosed (3420) after Close.
    std::shared_ptr<Recordset> OpenRecordset(const QString& source, RecordsetType type);

    TableDefs tableDefs() { return TableDefs(*this); }
    /// Creates the definition of a new table. The store contains the table only after it is
    /// appended.
    TableDef CreateTableDef(const QString& name);
    void Close();

    /// Transaction control for all operations of this Database. The main program uses no
    /// transactions; the companion programs create and move whole stores in one transaction.
    void BeginTrans();
    void CommitTrans();
    void Rollback();

    /// Writes a snapshot of the whole store to the path and replaces an existing file there. A
    /// failed copy leaves no partial file. Other stations may keep working, but this process must
    /// not have another connection to the store. Throws Locked (3260) if the store stays locked,
    /// and DiskFull (3026), DiskOrNetworkError (3043) or PermissionDenied (3051) if the copy cannot
    /// be written.
    void CopyTo(const QString& path);

    /// Returns the engine driver. Throws ObjectClosed (3420) after Close. For use inside the engine
    /// only.
    Session& session() const;

private:
    friend class TableDefs;
    std::vector<std::shared_ptr<TableDefState>> listedTables();

    std::unique_ptr<Session> session_;
    QString name_;
    std::vector<std::shared_ptr<TableDefState>> tables_;
};

class Workspace
{
public:
    /// Sets how long to wait for a locked store. The default is 5 seconds.
    void setLockWait(std::chrono::milliseconds wait) { timeouts_.lock = wait; }
    /// Sets the timeout of one statement on a server. The default is 7 seconds. The timeout must be
    /// longer than the lock wait.
    void setAnswerWait(std::chrono::milliseconds wait) { timeouts_.answer = wait; }
    /// Opens an existing store shared for reading and writing. The file at the path is either an
    /// embedded store or a link to a database on a server. Throws DatabaseFileNotFound (3024) for a
    /// missing file, UnrecognizedFormat (3343) for a file that is not a store and for a damaged
    /// link, CorruptDatabase (3049) for a damaged store, Locked (3260) if the store stays locked
    /// for the lock wait, and ConnectionFailed (3151) if the server cannot be reached.
    std::shared_ptr<Database> OpenDatabase(const QString& path) const;
    /// Creates an empty store and opens it. Throws DatabaseExists (3204) if the file exists, and
    /// DatabaseFileNotFound (3024) if it cannot be created.
    std::shared_ptr<Database> CreateDatabase(const QString& path) const;

private:
    Timeouts timeouts_;
};

/// The store engine. The single instance is created at the first use and kept until the process
/// ends.
class DBEngine
{
public:
    static DBEngine& instance();
    /// Throws ItemNotFound (3265) for any number except 0.
    Workspace& Workspaces(int number);
    std::shared_ptr<Database> OpenDatabase(const QString& path);
    /// Closes the pooled connections that no Database uses.
    void Idle();

private:
    Workspace workspace_;
};

} // namespace dao
