#pragma once

#include "platform/dao/engine/types.h"
#include "platform/dao/recordset.h"
#include "platform/dao/session_owner.h"
#include "platform/dao/table_def.h"

#include <memory>
#include <vector>

namespace dao {

/// An open store. Each call of OpenDatabase returns a Database object of its own, which the caller
/// and all recordsets opened from it share. The store is closed by Close, or when the last owner
/// releases the Database object. After Close, all recordsets of the Database throw ObjectClosed
/// (3420).
class Database : public SessionOwner, public std::enable_shared_from_this<Database>
{
public:
    explicit Database(std::unique_ptr<Session> session);

    QString Name() const { return session().name(); }
    /// Returns the location of the store for messages: the path of the file, or the names of the
    /// database and the server.
    QString place() const { return session().place(); }
    bool isOpen() const { return hasSession(); }

    /// Opens a recordset. `source` is a table name (type dbOpenTable or dbOpenDynaset) or, for a
    /// dynaset, a query of the form SELECT * FROM table [WHERE field = number] [ORDER BY field
    /// [ASC]]. Throws TableNotFound (3078), TooFewParameters (3061) for an unknown field,
    /// QuerySyntax (3131) for any other query, OperationNotSupported (3251) for a query with
    /// dbOpenTable, and ObjectClosed (3420) after Close.
    std::shared_ptr<Recordset> OpenRecordset(const QString& source, RecordsetType type);

    TableDefs tableDefs();
    /// Creates the definition of a new table. TableDefs::Append then creates the table in the
    /// store.
    TableDef CreateTableDef(const QString& name);
    void Close();

    /// BeginTrans starts a transaction, which contains all later statements of this Database until
    /// CommitTrans or Rollback.
    void BeginTrans() { session().begin(); }
    void CommitTrans() { session().commit(); }
    void Rollback() { session().rollback(); }

    /// Writes a snapshot of the whole store to a file at the path and replaces an existing file
    /// there. A failed copy leaves no partial file. Meanwhile other stations can read, and stations
    /// that write wait. This process must not have another connection to the store. Throws Locked
    /// (3260) if the store stays locked, DiskFull (3026), DiskOrNetworkError (3043) or
    /// PermissionDenied (3051) if the store cannot be read or the copy cannot be written, and
    /// OperationNotSupported (3251) for a store on a server.
    void CopyTo(const QString& path) { session().bulk()->copyTo(path); }

private:
    std::shared_ptr<TableList> tables_;
};

class Workspace
{
public:
    /// Sets how long a statement waits for a locked store. The default is 5 seconds.
    void setLockWait(std::chrono::milliseconds wait) { timeouts_.lock = wait; }
    /// Sets how long the program waits for a server's answer to one statement. The default is 7
    /// seconds. This time must be longer than the wait for a lock (see setLockWait), so that the
    /// server can report the lock first.
    void setAnswerWait(std::chrono::milliseconds wait) { timeouts_.answer = wait; }
    /// Opens an existing store for reading and writing, shared with other stations. The file at the
    /// path is either an embedded store or a link file that names the location of a store. Throws
    /// DatabaseFileNotFound (3024) for a missing file, UnrecognizedFormat (3343) for a file that is
    /// not a store and for a damaged link file, CorruptDatabase (3049) for a damaged store, Locked
    /// (3260) if the store is still locked after the lock wait, and ConnectionFailed (3151) if the
    /// server cannot be reached.
    std::shared_ptr<Database> OpenDatabase(const QString& path) const;
    /// Creates an empty store in a new file at the path and opens the store. Throws DatabaseExists
    /// (3204) if the file exists, and DatabaseFileNotFound (3024) if the file cannot be created.
    std::shared_ptr<Database> CreateDatabase(const QString& path) const;

private:
    Timeouts timeouts_;
};

/// The object with which all stores are opened. The process has one instance, which is created at
/// the first use and kept until the process ends.
class DBEngine
{
public:
    static DBEngine& instance();
    /// Returns the only workspace, which has the number 0. Throws ItemNotFound (3265) for any other
    /// number.
    Workspace& Workspaces(int number);
    std::shared_ptr<Database> OpenDatabase(const QString& path)
    {
        return workspace_.OpenDatabase(path);
    }
    /// Closes the connections that are kept open for reuse and that no Database uses.
    void Idle();

private:
    Workspace workspace_;
};

} // namespace dao
