#pragma once

#include "platform/dao/engine/types.h"
#include "platform/dao/recordset.h"
#include "platform/dao/session_owner.h"
#include "platform/dao/table_def.h"

#include <memory>
#include <vector>

namespace dao {

/// A handle on a store with its own connection. It is shared by the code that opened it and by all
/// its recordsets. The connection ends with the last of these references or with Close. After
/// Close, all its recordsets throw ObjectClosed (3420).
class Database : public SessionOwner, public std::enable_shared_from_this<Database>
{
public:
    explicit Database(std::unique_ptr<Session> session);

    QString Name() const { return session().name(); }
    /// Returns the store's location for messages: the path, or the database and server.
    QString place() const { return session().place(); }
    bool isOpen() const { return hasSession(); }

    /// Opens a recordset. `source` is a table name (type dbOpenTable or dbOpenDynaset) or, for a
    /// dynaset, a query of the form SELECT * FROM table [WHERE field = number] [ORDER BY field
    /// [ASC]]. Throws TableNotFound (3078), TooFewParameters (3061) for an unknown field,
    /// QuerySyntax (3131) for any other query, OperationNotSupported (3251) for a query with
    /// dbOpenTable, and ObjectClosed (3420) after Close.
    std::shared_ptr<Recordset> OpenRecordset(const QString& source, RecordsetType type);

    TableDefs tableDefs();
    /// Creates the definition of a new table. The store contains the table only after it is
    /// appended.
    TableDef CreateTableDef(const QString& name);
    void Close();

    /// Transaction control for all operations of this Database. The main program uses no
    /// transactions; the companion programs create and move whole stores in one transaction.
    void BeginTrans() { session().begin(); }
    void CommitTrans() { session().commit(); }
    void Rollback() { session().rollback(); }

    /// Writes a snapshot of the whole store to the path and replaces an existing file there. A
    /// failed copy leaves no partial file. Other stations may keep working, but this process must
    /// not have another connection to the store. Throws Locked (3260) if the store stays locked,
    /// and DiskFull (3026), DiskOrNetworkError (3043) or PermissionDenied (3051) if the copy cannot
    /// be written.
    void CopyTo(const QString& path) { session().bulk()->copyTo(path); }

private:
    std::shared_ptr<TableList> tables_;
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
    std::shared_ptr<Database> OpenDatabase(const QString& path)
    {
        return workspace_.OpenDatabase(path);
    }
    /// Closes the pooled connections that no Database uses.
    void Idle();

private:
    Workspace workspace_;
};

} // namespace dao
