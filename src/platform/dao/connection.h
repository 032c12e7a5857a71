#pragma once

#include "platform/dao/engine/types.h"

#include <memory>

namespace dao {
class Database;
}

/// The report's access to the store: a connection executes a query text and returns its rows for
/// reading.
namespace ado {

/// The rows of a query, in the order of the query. All rows that are loaded at the same time come
/// from one snapshot of the store.
///
/// An open transaction would keep other stations from writing, so each snapshot is that of one
/// statement. Execute reads the first rows. If the query has more rows, readAll replaces them by
/// all rows of a second snapshot.
class Recordset
{
public:
    virtual ~Recordset() = default;
    /// Returns the number of rows of the query. readAll may change it.
    virtual int RecordCount() const = 0;
    /// Returns how many rows, from the first one, are loaded. It is RecordCount after readAll.
    virtual int rowsAtHand() const { return RecordCount(); }
    /// Loads all rows from one snapshot. Does nothing if they are already loaded. Returns true if
    /// the number of rows, or a row that was loaded before, has changed. Throws the errors of the
    /// store; then the loaded rows stay as they were.
    virtual bool readAll() { return false; }
    virtual int FieldCount() const = 0;
    /// Returns the position of a field by its case-insensitive name, or -1 if there is none.
    virtual int ordinalOf(const QString& name) const = 0;
    /// Returns at most `count` rows, starting with row `first`, which is counted from 0. The values
    /// are like those of dao::Field::Value. Calls readAll if one of the rows is not loaded. Throws
    /// DataTypeConversion (3421) or Overflow (6) for a stored value that does not fit its type.
    virtual std::vector<std::vector<QVariant>> rows(int first, int count) = 0;
};

class Connection
{
public:
    Connection();
    ~Connection();
    Q_DISABLE_COPY_MOVE(Connection)

    /// Opens the store at the path in the connection text, "Provider=...;Data Source=path". The
    /// provider is ignored. Throws like dao::Workspace::OpenDatabase.
    void Open(const QString& connectionString, const QString& user = {},
              const QString& password = {}, int options = -1);
    std::shared_ptr<Recordset> Execute(const QString& query, int options = -1);

private:
    std::shared_ptr<dao::Database> database_;
};

} // namespace ado
