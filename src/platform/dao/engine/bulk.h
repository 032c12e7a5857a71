#pragma once

#include "platform/dao/engine/types.h"
#include "platform/runtime/run_time_error.h"

#include <QByteArrayView>

#include <memory>
#include <optional>
#include <vector>

namespace dao {

/// Reads the rows of a table in insertion order.
class RowStream
{
public:
    virtual ~RowStream() = default;
    /// Returns the next row as bytes in the format of PostgreSQL's binary COPY (see RowWriter), or
    /// nothing after the last row. The bytes are valid until the next call of this function. Throws
    /// DataTypeConversion (3421) or Overflow (6) if a value does not fit the declared type of its
    /// field, and FieldTooSmall (3163) if a text is longer than its field.
    virtual std::optional<QByteArrayView> next() = 0;
};

/// Writes rows to a table that was created in the same transaction.
class RowSink
{
public:
    virtual ~RowSink() = default;
    /// Appends a row to the table. If the row cannot be stored, a later call may be the one that
    /// throws the error.
    virtual void add(QByteArrayView row) = 0;
    /// Completes the writing. This function must be called once after the last row. If it is not
    /// called, it is undefined which rows are stored.
    virtual void finish() = 0;
};

/// The reasons why a power cut can lose rows of a store on a server (`hazards`), and the reasons
/// why damage can stay unnoticed (`remarks`). The two lists are empty for an embedded store.
struct Durability
{
    QStringList hazards; ///< Confirmed rows may be lost: one text for each reason.
    QStringList remarks; ///< Damage may stay unnoticed: one text for each reason.
};

/// A change of one row, as recorded in the log of changes that a server's database keeps.
struct LoggedChange
{
    QString moment; ///< In the time zone of the server's database.
    QString who;    ///< The role that was logged in.
    QString action; ///< "added", "changed" or "deleted".
    QString table;
    QString key;    ///< The primary key of the row.
    QString oldRow; ///< The values before the change without Null, as JSON; empty for a new row.
};

/// Reads, copies and examines whole stores and whole tables. Only the program zomrel-store uses
/// this class. While an object that reads or writes rows (RowStream or RowSink) exists, its session
/// cannot execute any other statement.
class Bulk
{
public:
    virtual ~Bulk() = default;

    /// Reads the whole store and returns the defects that the database engine finds, one text for
    /// each defect.
    virtual QStringList integrityFindings() = 0;
    /// Returns one line for each trigger, view, rule or constraint that the program does not
    /// create. Also returns one line for each index with options that the program does not use, and
    /// for each trigger of the program that was changed.
    virtual QStringList foreignObjects() = 0;
    /// Writes a snapshot of the whole store to a file at the path and replaces an existing file
    /// there. The copy is on the disk when the function returns. Meanwhile other stations can read,
    /// and stations that write wait. This process must not have another connection to the store.
    /// Throws Locked (3260) if the store stays locked, DiskFull (3026), DiskOrNetworkError (3043)
    /// or PermissionDenied (3051) if the store cannot be read or the copy cannot be written, and
    /// OperationNotSupported (3251) for a store on a server.
    virtual void copyTo(const QString& path) = 0;

    /// Returns the last number that a counter field has assigned, or 0 if the field has assigned
    /// none. Returns nothing if the store lacks the triggers or the sequence that assign the
    /// numbers.
    virtual std::optional<qint64> counterMark(const QString& table, const QString& field) = 0;

    virtual std::unique_ptr<RowStream> rowStream(const TableInfo& table) = 0;
    virtual std::unique_ptr<RowSink> rowSink(const TableInfo& table) = 0;
    /// Returns the highest number that a counter field has assigned or that a row contains in this
    /// field. Returns 0 if there is no such number.
    virtual qint64 highestGiven(const QString& table, const QString& field) = 0;
    /// Makes a counter field continue with the number after `highest`.
    virtual void countOnFrom(const QString& table, const QString& field, qint64 highest) = 0;
    /// Updates the engine's statistics of a table after many rows have been added.
    virtual void analyze(const QString&) {}
    /// Moves tables of a store on a server to a new schema of the database. The tables are kept but
    /// no longer belong to the store. Returns a text that names the new schema. Throws
    /// OperationNotSupported (3251) for an embedded store.
    virtual QString setAside(const QStringList& /*tables*/)
    {
        throw runtime::RunTimeError(runtime::OperationNotSupported);
    }
    /// Sets the owner of all tables that are created in the rest of the transaction. The new owner
    /// is the owner of the first given table. If the list is empty, the new owner is the role that
    /// `zomrel-store server-setup` creates. Does nothing in an embedded store, or if the current
    /// user may not act as the new owner.
    virtual void actAsOwnerOf(const QStringList&) {}
    /// Returns the users' rights on the given tables as a list of SQL statements. The statements
    /// grant the same rights again after new tables with the same names have been created. A
    /// statement does nothing if its table does not exist.
    virtual QStringList grantsOn(const QStringList&) { return {}; }

    /// Returns the reasons why a power cut can lose rows of the store, and the reasons why damage
    /// can stay unnoticed. A reason is a setting of the server or of a table.
    virtual Durability durability() { return {}; }
    /// Returns the logged changes of an order and its lines, the oldest change first. Throws
    /// OperationNotSupported (3251) for a store without a log of changes.
    virtual std::vector<LoggedChange> changesOfOrder(int)
    {
        throw runtime::RunTimeError(
            runtime::OperationNotSupported,
            QStringLiteral("Only a store on a server has a log of changes."));
    }
};

} // namespace dao
