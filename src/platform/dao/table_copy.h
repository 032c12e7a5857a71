#pragma once

#include <QByteArray>
#include <QStringList>

#include <functional>

namespace dao {

class Database;

/// What was read of a table. Equal for tables that hold the same values in the same order of rows,
/// on whatever engine.
struct TableContents
{
    qint64 rows = 0;
    QByteArray digest;

    bool operator==(const TableContents&) const = default;
};

/// Is told from time to time how many rows have been read.
using RowsSeen = std::function<void(qint64 rows)>;

/// From here to Rollback the database shows the store as it stands at this moment, and changes
/// nothing. An embedded store keeps writers waiting as long.
void beginSnapshot(Database& database);

/// Makes a table in a store that has none of this name: its fields, rows and indexes as they are,
/// rows in the order in which they were stored, counters going on after the highest number that the
/// source has ever given. To be called within a transaction of the target.
///
/// Throws TableNotFound (3078) for a table that the source lacks, DataTypeConversion (3421),
/// Overflow (6) and FieldTooSmall (3163) with table, row and field for contents that do not fit
/// their field, and what the engines throw.
TableContents copyTable(Database& from, const QString& table, Database& to, const RowsSeen& seen);

/// The tables of the program itself, whose names begin with zomrel_ and which TableDefs does not
/// list. Those in which an engine keeps its counters are left out: copyTable sees to them.
QStringList ownTables(Database& database);

/// Reads a table to its end. Throws as copyTable does.
TableContents readTable(Database& database, const QString& table, const RowsSeen& seen);

/// Puts tables of a store on a server out of the store, to where its keeper finds them, and gives
/// the name of that place. Throws OperationNotSupported (3251) for an embedded store.
QString setAside(Database& database, const QStringList& tables);

} // namespace dao
