#pragma once

#include "platform/dao/recordset.h"
#include "platform/dao/row_list.h"
#include "platform/dao/table_rows.h"

#include <optional>

namespace dao {

/// Two pointers to the Database of a recordset. Recordset::database returns `database`. The
/// recordset classes get the session from `owner`, which points to the base class of Database, so
/// that they need not include the header of Database.
struct Opened
{
    std::shared_ptr<Database> database;
    std::shared_ptr<const SessionOwner> owner;
};

/// The state that table-type recordsets and dynasets have in common: the values of the current row,
/// the values assigned to that row, and the current position. The derived classes implement the
/// moves.
class Recordset::Private
{
public:
    enum class Position {
        Nowhere,   ///< No current row after a Seek without a match.
        Before,    ///< Before the first row.
        OnRow,     ///< On a row, which another station may have deleted.
        OnDeleted, ///< On a row that was deleted through this recordset.
        After,     ///< After the last row.
        Empty,     ///< There are no rows.
    };
    enum class Pending { Nothing, Addition, Change };

    Private(Opened opened, TableInfo table);
    virtual ~Private() = default;
    Q_DISABLE_COPY_MOVE(Private)

    virtual RecordsetType type() const = 0;
    virtual int recordCount() = 0;
    virtual bool isEmpty() = 0;
    /// In a dynaset, marks all rows as reached, so that RecordCount counts them. Does nothing in a
    /// table-type recordset.
    virtual void reachEnd() {}
    /// In a dynaset, marks the first `count` rows as reached, so that RecordCount counts them. Does
    /// nothing in a table-type recordset.
    virtual void reach(int /*count*/) noexcept {}
    virtual void goFirst() = 0;
    /// Makes the first row current. A derived class may delay the look-up of the row until settle
    /// is called.
    virtual void standFirst() { goFirst(); }
    /// Performs the look-up that standFirst has delayed.
    virtual void settle() {}
    virtual void goLast() = 0;
    /// Moves the current position by this number of rows, which is not 0. The caller must have
    /// checked that the current position allows the move.
    virtual void goBy(int rows) = 0;
    virtual bool has(RowNumber number) = 0;
    virtual void goTo(RowNumber number) = 0;
    virtual void requery() = 0;
    /// Runs the query again. In a dynaset, the same number of rows as before then counts as reached
    /// (see Recordset::RecordCount).
    virtual void requeryAsFarAsReached() { requery(); }
    virtual void rowAdded(RowNumber) {}
    virtual void rowRemoved() {}
    /// Returns all rows in this recordset's order.
    virtual std::shared_ptr<RowList> allRows() = 0;

    virtual void setIndex(const QString& name);
    virtual QString index() const;
    virtual void seek(const QVariant& key);

    /// Returns the session of the database. Throws ObjectClosed (3420) after the recordset or its
    /// database has been closed.
    Session& session() const;
    const FieldInfo& field(int ordinal) const;
    /// Throws NoCurrentRecord (3021) if there is no current row, and RecordDeleted (3167) if the
    /// current row is deleted.
    void requireReadable();
    /// Reads the current row's values again.
    void refetch();
    QVariant value(int ordinal);
    void drop();
    /// Makes the row `found` current. If `found` is empty, no row becomes current. The position is
    /// then Position::Empty in a recordset without rows, and the position `otherwise` in any other
    /// recordset.
    void standOn(std::optional<StoredRow> found, Position otherwise);
    std::vector<TableRows::Assignment> additions() const;
    std::vector<TableRows::Assignment> changes() const;

    std::shared_ptr<Database> database;
    std::shared_ptr<const SessionOwner> owner; ///< The same database.
    TableRows rows;
    bool closed = false;
    Position place = Position::Nowhere;
    StoredRow row;
    bool rowExists = false;
    bool noMatch = false;
    Pending pending = Pending::Nothing;
    std::vector<std::optional<QVariant>> assigned;
    RecordsetObserver* observer = nullptr;
};

std::shared_ptr<Recordset> openTable(Opened opened, TableInfo table);
/// Opens a dynaset. Throws TooFewParameters (3061) for an unknown field in the query.
std::shared_ptr<Recordset> openDynaset(Opened opened, TableInfo table, const SelectQuery& query);
/// Returns the definition of a table. Throws TableNotFound (3078) if there is no such table, and
/// OperationNotSupported (3251) for a view.
TableInfo expectUpdatable(Session& session, const QString& name);
/// Returns the sort order of a query. Throws TooFewParameters (3061) for an unknown field.
RowOrder orderOf(const TableRows& rows, const SelectQuery& query);

std::unique_ptr<RecordsetPages> makePages(std::shared_ptr<const SessionOwner> owner,
                                          const TableRows& rows, std::shared_ptr<RowList> list);

} // namespace dao
