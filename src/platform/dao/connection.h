#pragma once

#include "platform/dao/types.h"

#include <memory>

namespace dao {
class Database;
}

/// The report's second, independent way to the store: a connection that executes a query text and
/// gives a forward-only, read-only record source.
namespace ado {

/// Rows in the query's order as they stood when it was executed, values as they are when a row is
/// reached. Holds its connection for as long as it lives, and no lock between calls.
class Recordset
{
public:
    virtual ~Recordset() = default;
    /// The number of rows, known at once.
    virtual int RecordCount() const = 0;
    virtual int FieldCount() const = 0;
    /// -1 where no field has the name (any case).
    virtual int ordinalOf(const QString& name) const = 0;
    /// Reads the rows of a page of the query, from row `first` (0-based), at most `count` of them,
    /// as dao::Field::Value gives values; a row deleted meanwhile comes with all its fields Null.
    virtual std::vector<std::vector<QVariant>> rows(int first, int count) = 0;
};

class Connection
{
public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// The connection text names a provider and a data source, "Provider=...;Data Source=path". The
    /// path is taken from its data source. Raises as dao::Workspace::OpenDatabase does.
    void Open(const QString& connectionString, const QString& user = {},
              const QString& password = {}, int options = -1);
    std::shared_ptr<Recordset> Execute(const QString& query, int options = -1);

private:
    std::shared_ptr<dao::Database> database_;
};

} // namespace ado
