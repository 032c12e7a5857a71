#pragma once

#include <QByteArray>
#include <QStringList>

#include <functional>

namespace dao {

class Database;

/// The number of rows of a table and a hash of the values of all rows, for comparing tables. Tables
/// with the same rows in the same order have equal numbers and hashes, even on different engines.
struct TableContents
{
    qint64 rows = 0;
    QByteArray digest;

    bool operator==(const TableContents&) const = default;
};

/// A progress function, called repeatedly with the number of rows read so far.
using RowsSeen = std::function<void(qint64 rows)>;

/// Starts a transaction that only reads a snapshot. Until Rollback is called, the database shows
/// the store as it is now. Other stations cannot write to an embedded store meanwhile.
void beginSnapshot(Database& database);

/// Copies a table with its fields, rows and indexes to another store, which must not have a table
/// of this name. The rows keep their insertion order. Counter fields continue after the highest
/// number that the source has ever assigned. Must be called within a transaction of the target.
///
/// Throws TableNotFound (3078) if the source has no such table, and any error of the engines. For a
/// value that does not fit its field, throws DataTypeConversion (3421), Overflow (6) or
/// FieldTooSmall (3163), with the table, the row and the field in the description.
TableContents copyTable(Database& from, const QString& table, Database& to, const RowsSeen& seen);

/// Gives the store a new identity and a new generation (see StoreMark), within the open
/// transaction. The function is for a store that has just been created, imported or moved.
void makeStoreMark(Database& database);
/// Gives the store `to` the identity of the store `from`, within the open transaction of `to`, and
/// a new random text as generation (see StoreMark). One of the two stores is a backup of the other
/// one. If `from` has no identity, `to` gets a new identity.
void keepStoreMark(Database& from, Database& to);
/// Returns the identity of a store. A store and its backups have the same identity, and every other
/// store has a different identity. The identity of a store that an older version of the program
/// made is empty until a newer version writes to the store.
QString storeIdentity(Database& database);
/// Gives the store a new random text as generation (see StoreMark). A station that used the store
/// before sees from the new text that the store was restored. Opens a transaction unless one is
/// open.
void renewStoreMark(Database& database);

/// Returns the names of the program's internal tables, which start with zomrel_ and which TableDefs
/// does not list. The internal table of counters in an embedded store is not returned, because
/// copyTable copies the counters.
QStringList ownTables(Database& database);

/// Reads all rows of a table and returns their number and hash. Throws the same errors as
/// copyTable.
TableContents readTable(Database& database, const QString& table, const RowsSeen& seen);

/// Moves tables of a store on a server to a new schema of the database. The tables are kept but no
/// longer belong to the store. Returns a text that names the new schema. Throws
/// OperationNotSupported (3251) for an embedded store.
QString setAside(Database& database, const QStringList& tables);

/// Sets the owner of all tables that are created in the rest of the transaction. The new owner is
/// the owner of the first given table. If the list is empty, the new owner is the role that
/// `zomrel-store server-setup` creates. With this function, a superuser creates a store that
/// stations can use. Does nothing in an embedded store, or if the current user may not act as the
/// new owner.
void actAsOwnerOf(Database& database, const QStringList& tables);
/// Returns the users' rights on the tables as a list of SQL statements, which applyGrants executes
/// later. The list is empty for an embedded store.
QStringList grantsOn(Database& database, const QStringList& tables);
/// Executes the SQL statements that grantsOn has returned for earlier tables. They grant the same
/// rights on the tables that now have the names of the earlier tables.
void applyGrants(Database& database, const QStringList& grants);

} // namespace dao
