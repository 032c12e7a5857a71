#pragma once

#include "platform/dao/engine/timeouts.h"
#include "platform/dao/engine/types.h"
#include "platform/dao/recordset.h"

#include <memory>
#include <vector>

namespace dao {

class Session;
class Database;

/// One index of a table definition.
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

/// A field that is made by TableDef::CreateField and not yet appended, or one that stands in a
/// table.
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

/// The indexes of a table: the primary key first, then the others in the order of creation.
class Indexes
{
public:
    explicit Indexes(std::shared_ptr<TableDefState> table) : table_(std::move(table)) {}
    int Count() const;
    /// Throws ItemNotFound (3265) for a position or name that does not exist.
    Index operator()(int position) const;
    Index operator()(const QString& name) const;
    /// Adds an index, in the store at once where the table is appended, otherwise with the table.
    /// Throws ItemNotFound (3265), then or there, where the table has not all its fields.
    void Append(const Index& index) const;

private:
    std::shared_ptr<TableDefState> table_;
};

/// The fields of a table definition, by position or by name in any case.
class FieldDefs
{
public:
    explicit FieldDefs(std::shared_ptr<TableDefState> table) : table_(std::move(table)) {}
    int Count() const;
    /// Throws ItemNotFound (3265) for a position or name that does not exist.
    FieldDef operator()(int position) const;
    FieldDef operator()(const QString& name) const;
    /// Adds the field to the table, in the store at once where the table is appended; old rows hold
    /// Null there, a Boolean False. Throws FieldDefinedTwice (3191) where the name exists.
    void Append(const FieldDef& field) const;
    /// Takes the field out of the table. A table may be left without any field; it then stands in
    /// this definition alone until the next field is appended.
    void Delete(const QString& name) const;

private:
    std::shared_ptr<TableDefState> table_;
};

/// A table's definition. Made by Database::CreateTableDef or addressed through TableDefs; a handle
/// that shares its state with every other handle on the same table of the same Database.
class TableDef
{
public:
    const QString& Name() const;
    /// False where the definition cannot be changed (a view).
    bool Updatable() const;
    FieldDefs Fields() const { return FieldDefs(state_); }
    dao::Indexes indexes() const { return dao::Indexes(state_); }
    /// Type and size of a new field; a text field of size 0 gets the default size of 255.
    FieldDef CreateField(const QString& name, DataType type, int size = 0) const;
    /// A counter: a whole number that the store gives from 1 and never gives twice, also not after
    /// the row with the highest one has been deleted.
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
    /// By position in the order of creation, or by name in any case. Throws ItemNotFound (3265).
    TableDef operator()(int position) const;
    TableDef operator()(const QString& name) const;
    /// Creates the table in the store.
    void Append(const TableDef& table) const;

private:
    Database& database_;
};

/// One connection of its own to a store. Shared between the handle that opened it and every
/// recordset opened on it; the connection goes with the last of them, or at once by Close, after
/// which every recordset on it throws ObjectClosed (3420).
class Database : public std::enable_shared_from_this<Database>
{
public:
    explicit Database(std::unique_ptr<Session> session);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    const QString& Name() const;
    /// The store's place as a person is told of it: the path, or database and server.
    QString place() const;
    bool isOpen() const { return session_ != nullptr; }

    /// Opens a table by name (type dbOpenTable or dbOpenDynaset), or a query text of the form
    /// SELECT * FROM table [WHERE field = number] [ORDER BY field [ASC]] as a dynaset. Throws
    /// TableNotFound (3078) for an unknown table, TooFewParameters (3061) for an unknown field,
    /// QuerySyntax (3131) for another text, OperationNotSupported (3251) for a query opened as a
    /// table, ObjectClosed (3420) after Close.
    std::shared_ptr<Recordset> OpenRecordset(const QString& source, RecordsetType type);

    TableDefs tableDefs() { return TableDefs(*this); }
    /// A definition that stands in no store before it is appended.
    TableDef CreateTableDef(const QString& name);
    void Close();

    /// A transaction over everything that this database does. The program itself uses none; the
    /// companion programs build and move whole stores in one.
    void BeginTrans();
    void CommitTrans();
    void Rollback();

    /// Writes the whole store, as it stands at one moment, to the path, in place of what is there.
    /// A copy is whole or not there at all. Other stations may work meanwhile; this process may
    /// have no other connection to the store. Throws Locked (3260) where the store stays locked,
    /// DiskFull (3026), DiskOrNetworkError (3043) and PermissionDenied (3051) where the copy cannot
    /// be written.
    void CopyTo(const QString& path);

    /// The engine below. Throws ObjectClosed (3420) after Close. For the rooms of the engine alone.
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
    /// How long a locked store is waited for; 5 s unless set.
    void setLockWait(std::chrono::milliseconds wait) { timeouts_.lock = wait; }
    /// How long a server may take for one statement; 7 s unless set. More than the wait for a lock.
    void setAnswerWait(std::chrono::milliseconds wait) { timeouts_.answer = wait; }
    /// Opens the store shared, for reading and writing, and creates nothing. The file at the path
    /// is the store, or a link to the database on a server that is. Throws DatabaseFileNotFound
    /// (3024) for a missing file, UnrecognizedFormat (3343) for a file that is no store and for a
    /// damaged link, CorruptDatabase (3049) for a damaged store, Locked (3260) for one locked
    /// longer than the wait of 5 s, ConnectionFailed (3151) for a server that cannot be reached.
    std::shared_ptr<Database> OpenDatabase(const QString& path) const;
    /// Makes an empty store and opens it. Throws DatabaseExists (3204) where the file exists,
    /// DatabaseFileNotFound (3024) where none can be made.
    std::shared_ptr<Database> CreateDatabase(const QString& path) const;

private:
    Timeouts timeouts_;
};

/// The engine, made at its first use and kept for the life of the process.
class DBEngine
{
public:
    static DBEngine& instance();
    /// Throws ItemNotFound (3265) for any number but 0.
    Workspace& Workspaces(int number);
    std::shared_ptr<Database> OpenDatabase(const QString& path);
    /// Lets go of the connections that no database works over at the moment.
    void Idle();

private:
    Workspace workspace_;
};

} // namespace dao
