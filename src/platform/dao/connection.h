#pragma once

#include "platform/dao/engine/types.h"

#include <memory>

namespace dao {
class Database;
}

/// The classes with which the report reads the store. A Connection executes a query text and
/// returns the rows of the query.
namespace ado {

/// The rows of a query, in the order of the query. All loaded rows come from one snapshot of the
/// store.
///
/// Connection::Execute loads only the first rows. If the query has more rows, readAll executes a
/// second statement, which loads all rows, and discards the first rows. The two statements are not
/// in one transaction, because an open transaction would keep other stations from writing.
class Recordset
{
public:
    virtual ~Recordset() = default;
    /// Returns the number of rows of the query. A call of readAll may change this number.
    virtual int RecordCount() const = 0;
    /// Returns the number of loaded rows, which are the first rows of the query. After readAll, all
    /// rows of the query are loaded.
    virtual int rowsAtHand() const { return RecordCount(); }
    /// Loads all rows of the query from one snapshot. Does nothing if all rows are already loaded.
    /// Returns true if the number of rows, or a row that was loaded before, has changed. Throws the
    /// errors of the store and then leaves the loaded rows unchanged.
    virtual bool readAll() { return false; }
    virtual int FieldCount() const = 0;
    /// Returns the position of a field by its case-insensitive name, or -1 if there is none.
    virtual int ordinalOf(const QString& name) const = 0;
    /// Returns at most `count` rows, starting with row `first`, which is counted from 0. The values
    /// have the types that dao::Field::Value returns. Calls readAll if one of the rows is not
    /// loaded yet. Throws DataTypeConversion (3421) or Overflow (6) for a stored value that does
    /// not fit the type of its field.
    virtual std::vector<std::vector<QVariant>> rows(int first, int count) = 0;
};

class Connection
{
public:
    Connection();
    ~Connection();
    Q_DISABLE_COPY_MOVE(Connection)

    /// Opens the store whose path is in the connection text, "Provider=...;Data Source=path". The
    /// provider is ignored. Throws the same errors as dao::Workspace::OpenDatabase.
    void Open(const QString& connectionString, const QString& user = {},
              const QString& password = {}, int options = -1);
    std::shared_ptr<Recordset> Execute(const QString& query, int options = -1);

private:
    std::shared_ptr<dao::Database> database_;
};

} // namespace ado
