#pragma once

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/dao/row_list.h"
#include "platform/dao/table_rows.h"

#include <optional>

namespace dao {

/// What the two kinds of recordset share: the row that was visited last, what is assigned to it,
/// and the place where the recordset stands. The kinds know how to get from one place to another.
class Recordset::Private
{
public:
    enum class Place {
        Nowhere,   ///< After a Seek that found nothing.
        Before,    ///< Before the first row.
        OnRow,     ///< On a row, which another station may have deleted.
        OnDeleted, ///< On a row deleted through this recordset.
        After,     ///< Behind the last row.
        Empty,     ///< There is no row.
    };
    enum class Pending { Nothing, Addition, Change };

    Private(std::shared_ptr<Database> database, TableInfo table);
    virtual ~Private() = default;
    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;

    virtual RecordsetType type() const = 0;
    virtual int recordCount() = 0;
    virtual bool isEmpty() = 0;
    /// Counts to the end, where counting depends on how far the rows were read.
    virtual void reachEnd() {}
    /// Counts the first rows as reached, where counting depends on how far the rows were read.
    virtual void reach(int /*count*/) noexcept {}
    virtual void goFirst() = 0;
    /// Stands on the first row; a kind may look it up when it is first asked for.
    virtual void standFirst() { goFirst(); }
    /// Looks up what standFirst has left.
    virtual void settle() {}
    virtual void goLast() = 0;
    /// A relative move by at least one row, from a place that allows it.
    virtual void goBy(int rows) = 0;
    virtual bool has(RowNumber number) = 0;
    virtual void goTo(RowNumber number) = 0;
    virtual void requery() = 0;
    /// Requery with as many rows counted as reached as before.
    virtual void requeryAsFarAsReached() { requery(); }
    virtual void rowAdded(RowNumber) {}
    virtual void rowRemoved() {}
    /// All rows in this recordset's order.
    virtual std::shared_ptr<RowList> allRows() = 0;

    virtual void setIndex(const QString& name);
    virtual QString index() const;
    virtual void seek(const QVariant& key);

    /// Throws ObjectClosed (3420) once the recordset or its database is closed.
    Session& session() const;
    const FieldInfo& field(int ordinal) const;
    /// Throws NoCurrentRecord (3021) or RecordDeleted (3167) where the current row cannot be read.
    void requireReadable();
    /// Fetches the current row's values anew.
    void refetch();
    QVariant value(int ordinal);
    void drop();
    /// Stands on a row, or where there is none, at the place given (Empty if no row is left).
    void standOn(std::optional<StoredRow> found, Place otherwise);
    std::vector<TableRows::Assignment> additions() const;
    std::vector<TableRows::Assignment> changes() const;

    std::shared_ptr<Database> database;
    TableRows rows;
    bool closed = false;
    Place place = Place::Nowhere;
    StoredRow row;
    bool rowExists = false;
    bool noMatch = false;
    Pending pending = Pending::Nothing;
    std::vector<std::optional<QVariant>> assigned;
    RecordsetObserver* observer = nullptr;
};

std::shared_ptr<Recordset> openTable(std::shared_ptr<Database> database, TableInfo table);
/// Throws TooFewParameters (3061) for an unknown field of the query.
std::shared_ptr<Recordset> openDynaset(std::shared_ptr<Database> database, TableInfo table,
                                       const SelectQuery& query);
/// The table that a query or name is about. Throws TableNotFound (3078), and OperationNotSupported
/// (3251) for a view.
TableInfo expectTable(Session& session, const QString& name);
/// The order that a query asks for. Throws TooFewParameters (3061).
RowOrder orderOf(const TableRows& rows, const SelectQuery& query);

std::unique_ptr<RecordsetPages> makePages(std::shared_ptr<Database> database, const TableRows& rows,
                                          std::shared_ptr<RowList> list);

} // namespace dao
