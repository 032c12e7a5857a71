#pragma once

#include "platform/dao/engine/types.h"

#include <memory>

namespace dao {
class Database;
}

/// The report's second, independent way to the store: a connection that executes a query text and
/// gives a forward-only, read-only record source.
namespace ado {

/// The rows of a query, in its order, with the values of one moment: a reader never sees a mix of
/// older and newer rows, nor a row without its values.
///
/// Holding a transaction open would keep other stations from writing, so each moment is that of
/// one statement. Execute reads the first rows; a short query is complete then. The rows behind
/// them are read with all others by a second statement (readAll), whose moment then holds for the
/// first rows, too. Until then only the first rows are given.
class Recordset
{
public:
    virtual ~Recordset() = default;
    /// The number of rows, known at once. readAll may change it.
    virtual int RecordCount() const = 0;
    /// How many rows are held from the first on; RecordCount once all are.
    virtual int rowsAtHand() const { return RecordCount(); }
    /// Reads all rows anew where not all are at hand. True if a row given before, or the number of
    /// rows, is another now. Throws what the engine throws, and nothing has changed then.
    virtual bool readAll() { return false; }
    virtual int FieldCount() const = 0;
    /// -1 where no field has the name (any case).
    virtual int ordinalOf(const QString& name) const = 0;
    /// The rows from row `first` (0-based) on, at most `count` of them, as dao::Field::Value gives
    /// values. Calls readAll for a row that is not at hand. Throws DataTypeConversion (3421) or
    /// Overflow (6) for contents that the field's type does not take.
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
    /// path is taken from its data source. Throws as dao::Workspace::OpenDatabase does.
    void Open(const QString& connectionString, const QString& user = {},
              const QString& password = {}, int options = -1);
    std::shared_ptr<Recordset> Execute(const QString& query, int options = -1);

private:
    std::shared_ptr<dao::Database> database_;
};

} // namespace ado
