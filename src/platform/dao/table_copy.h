#pragma once

#include <QByteArray>
#include <QStringList>

#include <functional>

namespace dao {

class Database;

/// The number of rows of a table and a hash of their values. Equal for tables with the same rows in
/// the same order, also on different engines.
struct TableContents
{
    qint64 rows = 0;
    QByteArray digest;

    bool operator==(const TableContents&) const = default;
};

/// A progress function, called repeatedly with the number of rows read so far.
using RowsSeen = std::function<void(qint64 rows)>;

/// Starts a read-only snapshot: until Rollback, the database shows the store as it is now. In an
/// embedded store, other stations cannot write meanwhile.
void beginSnapshot(Database& database);

/// Copies a table with its fields, rows and indexes to another store, which must not have a table
/// of this name. The rows keep their insertion order. Counters continue after the highest number
/// that the source has ever assigned. Must be called within a transaction of the target.
///
/// Throws TableNotFound (3078) if the source has no such table, and any error of the engines. For a
/// value that does not fit its field it throws DataTypeConversion (3421), Overflow (6) or
/// FieldTooSmall (3163) with the table, row and field in the description.
TableContents copyTable(Database& from, const QString& table, Database& to, const RowsSeen& seen);

/// Gives the store a new identity and generation, within the open transaction. A new store gets
/// them when it is created, imported or moved.
void makeStoreMark(Database& database);
/// Gives a backup or a restored store, within its open transaction, the identity of the store that
/// it was copied from, and a new generation. If that store has no identity, it gets a new one.
void keepStoreMark(Database& from, Database& to);
/// Returns the identity of the store: the same text for a store and its backups, another one for
/// any other store, and an empty text for a store that an older version made and nobody has written
/// to since.
QString storeIdentity(Database& database);
/// Gives the store a new generation, so that a station that has worked with it before notices that
/// it was restored. Opens a transaction unless one is open.
void renewStoreMark(Database& database);

/// Returns the program's internal tables, whose names start with zomrel_ and which TableDefs does
/// not list. The engine's table of counters is not returned, because copyTable copies counters.
QStringList ownTables(Database& database);

/// Reads all rows of a table. Throws like copyTable.
TableContents readTable(Database& database, const QString& table, const RowsSeen& seen);

/// Moves tables out of a store on a server without deleting them, and returns the name of the place
/// to which they were moved. Throws OperationNotSupported (3251) for an embedded store.
QString setAside(Database& database, const QStringList& tables);

/// Makes the owner of these tables the owner of all tables that the rest of the transaction
/// creates. If the list is empty, the owner is the role that `zomrel-store server-setup` creates. A
/// superuser thus creates a store that stations can use. Does nothing in an embedded store, or if
/// the current user may not act as the owner.
void actAsOwnerOf(Database& database, const QStringList& tables);
/// Returns the rights that users have on the tables, as statements for applyGrants. Empty for an
/// embedded store.
QStringList grantsOn(Database& database, const QStringList& tables);
/// Gives the rights to the present tables of the same names.
void applyGrants(Database& database, const QStringList& grants);

} // namespace dao
