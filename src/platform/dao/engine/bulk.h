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
    /// Returns the bytes of the next row (see RowWriter), or nothing after the last row. The bytes
    /// are valid until the next call. Throws DataTypeConversion (3421) or Overflow (6) if a value
    /// does not fit its declared type, and FieldTooSmall (3163) if a text is longer than its field.
    virtual std::optional<QByteArrayView> next() = 0;
};

/// Writes rows to a table that was created in the same transaction.
class RowSink
{
public:
    virtual ~RowSink() = default;
    /// Appends a row. A failure may be reported only by a later call.
    virtual void add(QByteArrayView row) = 0;
    /// Must be called once after the last row. Without this call it is undefined which rows are
    /// stored.
    virtual void finish() = 0;
};

/// What the settings of a store's server mean after a power cut. Both lists are empty for an
/// embedded store.
struct Durability
{
    QStringList hazards; ///< Confirmed rows may be lost: one text for each reason.
    QStringList remarks; ///< Damage may stay unnoticed: one text for each reason.
};

/// A change of a row, as read from the transaction log of a server's database.
struct LoggedChange
{
    QString moment; ///< In the time zone of the server's database.
    QString who;    ///< The role that was logged in.
    QString action; ///< "added", "changed" or "deleted".
    QString table;
    QString key;    ///< The primary key of the row.
    QString oldRow; ///< The values before the change without Null, as JSON; empty for a new row.
};

/// Operations on whole stores and whole tables, which only zomrel-store uses. While a RowStream or
/// a RowSink exists, its session can execute nothing else.
class Bulk
{
public:
    virtual ~Bulk() = default;

    /// Reads the whole store and returns the defects that the engine itself finds, one text each.
    virtual QStringList integrityFindings() = 0;
    /// Returns one line for each trigger, view, rule, constraint or special index in the store that
    /// the program does not make, and for each trigger of the program that was changed.
    virtual QStringList foreignObjects() = 0;
    /// Writes a snapshot of the whole store to the path and replaces an existing file there. The
    /// copy is on the disk when the function returns. Other stations can read meanwhile, but a
    /// station that writes has to wait. The process must not have another connection to the store.
    /// Throws Locked (3260), DiskFull (3026), DiskOrNetworkError (3043), PermissionDenied (3051),
    /// OperationNotSupported (3251).
    virtual void copyTo(const QString& path) = 0;

    /// Returns the last number that a counter has assigned, or 0 if it has assigned none. Returns
    /// nothing if the store lacks the triggers or the sequence of the counter.
    virtual std::optional<qint64> counterMark(const QString& table, const QString& field) = 0;

    virtual std::unique_ptr<RowStream> rowStream(const TableInfo& table) = 0;
    virtual std::unique_ptr<RowSink> rowSink(const TableInfo& table) = 0;
    /// Returns the highest number that a counter is known to have assigned, or 0 if there is none.
    virtual qint64 highestGiven(const QString& table, const QString& field) = 0;
    /// Makes a counter continue with the number after `highest`.
    virtual void countOnFrom(const QString& table, const QString& field, qint64 highest) = 0;
    /// Updates the engine's statistics of a table after many rows have been added.
    virtual void analyze(const QString&) {}
    /// Moves tables out of the store without deleting them, and returns the name of the place to
    /// which they were moved. Throws OperationNotSupported (3251) for an embedded store.
    virtual QString setAside(const QStringList& /*tables*/)
    {
        throw runtime::RunTimeError(runtime::OperationNotSupported);
    }
    /// Sets the owner of all tables that the rest of the transaction creates. The owner is that of
    /// the given tables. If none are given, it is the role that `zomrel-store server-setup`
    /// creates. Does nothing in an embedded store, or if the current user may not act as the owner.
    virtual void actAsOwnerOf(const QStringList&) {}
    /// Returns statements that give tables with these names the rights that the present tables
    /// have. A statement does nothing if its table does not exist.
    virtual QStringList grantsOn(const QStringList&) { return {}; }

    /// Returns what the settings of the store's server mean after a power cut.
    virtual Durability durability() { return {}; }
    /// Returns the logged changes of an order and its lines, the oldest first. Throws
    /// OperationNotSupported (3251) for a store without a log.
    virtual std::vector<LoggedChange> changesOfOrder(int)
    {
        throw runtime::RunTimeError(
            runtime::OperationNotSupported,
            QStringLiteral("Only a store on a server has a log of changes."));
    }
};

} // namespace dao
