#pragma once

#include "platform/dao/engine/types.h"

#include <memory>
#include <vector>

namespace dao {

class Database;
class Recordset;
class RecordsetPages;
class Session;

/// One field of a recordset's current row. A light handle: it stays good while its recordset lives,
/// and always means the row that is current at the moment of use.
class Field
{
public:
    Field(Recordset& recordset, int ordinal) : recordset_(&recordset), ordinal_(ordinal) {}

    const QString& Name() const;
    DataType Type() const;
    /// Declared size of a text field in characters.
    int Size() const;

    /// The value of the current row, or of the row being added or edited: an int for whole numbers
    /// and counters, -1 or 0 for a Boolean, a double, a QString, a QDate (QDateTime where there is
    /// a time part), an invalid QVariant for Null. Throws NoCurrentRecord (3021) without a current
    /// row, RecordDeleted (3167) for a deleted one.
    QVariant Value() const;

    /// Assigns to the row being added or edited, converted to the field's type at once. Whole
    /// numbers round half to even. Throws UpdateWithoutEdit (3020) outside AddNew and Edit,
    /// DataTypeConversion (3421) for a text that is no number or date (the empty text included),
    /// Overflow (6) for a number beyond the type, FieldTooSmall (3163) for a text longer than Size.
    void SetValue(const QVariant& value);

private:
    Recordset* recordset_;
    int ordinal_;
};

/// Watches one recordset. The data control is one.
class RecordsetObserver
{
public:
    virtual ~RecordsetObserver() = default;
    /// Before every move (Move..., Seek, moveToKey), also one onto the same row, and before a
    /// Delete. A MoveLast has read to the end by then. A move that is refused fires nothing. What
    /// it throws keeps the move from happening.
    virtual void currentAboutToChange() = 0;
    /// After every move, after SetIndex and Requery, and where the first row of all was added: the
    /// current row may be another one or none. Not after a Delete, for which rowDeleted stands.
    virtual void currentChanged() = 0;
    /// Rows were added, changed or deleted through this recordset.
    virtual void rowAdded(const RowKey& key) = 0;
    virtual void rowUpdated(const RowKey& key) = 0;
    virtual void rowDeleted(const RowKey& key) = 0;
};

/// A table-type recordset or a dynaset. After opening it stands on the first row, if there is one.
///
/// A table type is live: it is ordered by its Index or else by the table's own order, RecordCount
/// is exact, and moves and Seek cost one key look-up. The first row is looked up when it is first
/// asked for, after opening and after SetIndex.
///
/// A dynaset takes its keys once, at opening, in the query's order; rows of equal sort value stand
/// in the order in which they were stored. RecordCount counts the rows reached: 0 for none, 1 after
/// opening, all after MoveLast, up to the farthest row visited otherwise. Rows that a bound grid
/// has shown count as reached as well (markReached). Rows added through it count and stand at its
/// end; rows deleted through it no longer count.
///
/// The values of a row are fetched when it is visited, again by Move(0) and by Edit. No cursor
/// stays open between calls, so a recordset never holds a lock on the store.
///
/// Every method but Type, database and setObserver throws ObjectClosed (3420) once the Database is
/// closed.
class Recordset : public std::enable_shared_from_this<Recordset>
{
public:
    virtual ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    RecordsetType Type() const;
    /// Null once this recordset itself is closed.
    const std::shared_ptr<Database>& database() const;

    int RecordCount();
    bool isBof() const;
    bool isEof() const;
    /// True on a row that can be read.
    bool hasCurrent() const;

    /// Moves. Each drops what was assigned since AddNew or Edit without Update. MoveFirst and
    /// MoveLast throw NoCurrentRecord (3021) on an empty recordset; MoveNext throws NoCurrentRecord
    /// (3021) at the end, MovePrevious at the beginning. After a Delete, MoveNext goes to the row
    /// behind the deleted one.
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    /// Relative move; Move(0) fetches the current row's values anew.
    void Move(int rows);

    /// Table type only (OperationNotSupported, 3251, otherwise): the order by one of the table's
    /// indexes. Throws NotAnIndex (3015) for an unknown name. Stands on the first row afterwards.
    void SetIndex(const QString& name);
    QString Index() const;
    /// Table type only: makes the first row whose index value equals the key current. Otherwise
    /// NoMatch becomes true and there is no current row. Throws NoCurrentIndex (3019) without an
    /// Index, OperationNotSupported (3251) for another comparison than "=".
    void Seek(const QString& comparison, const QVariant& key);
    bool NoMatch() const;

    /// Opens a new row for assignment; the current row stays current, also after Update. Only where
    /// the recordset has no row at all, the one added becomes its current row.
    void AddNew();
    /// Opens the current row for assignment, its values fetched anew. Throws NoCurrentRecord
    /// (3021), RecordDeleted (3167).
    void Edit();
    /// Writes the new or edited row by one statement; an Edit that changed nothing writes nothing.
    /// Throws UpdateWithoutEdit (3020) without AddNew or Edit, DuplicateKey (3022) for a duplicate
    /// key, ReadOnly (3027), Locked (3260), FieldRequired (3314) and the like; the store then holds
    /// what it held before.
    void Update();
    void CancelUpdate();
    /// Deletes the current row. It stays current but cannot be read (3167) until the next move.
    void Delete();

    int FieldCount() const;
    /// Throws ItemNotFound (3265) for a name (any case) or ordinal that does not exist.
    Field Fields(const QString& name);
    Field Fields(int ordinal);
    const std::vector<FieldInfo>& fieldInfos() const;

    /// Runs the query again and stands on the first row.
    void Requery();
    /// Lets go of the database; every further call throws ObjectClosed (3420).
    void Close();

    /// For bound controls ------------------------------------------------------------------------

    /// At most one; null takes it away. The observer must outlive the recordset or take itself
    /// away.
    void setObserver(RecordsetObserver* observer);
    /// The current row's key; invalid where there is none.
    RowKey currentKey() const;
    /// Makes the row with the key current, as a Move does (observer calls included); false where
    /// the recordset has no such row, and nothing changes then.
    bool moveToKey(const RowKey& key);
    /// A reader of its own over the same rows in the same order, for grids: it neither moves this
    /// recordset nor changes what RecordCount says.
    std::unique_ptr<RecordsetPages> pages();
    /// Counts the first `count` rows as reached, as if the farthest of them had been visited,
    /// without reading or moving. Does nothing on a table type. Throws nothing, not even on a
    /// closed recordset.
    void markReached(int count) noexcept;
    /// Requery for a data control's Refresh: counts as many rows as reached as before, and all rows
    /// if all had been reached.
    void requeryAsFarAsReached();

    class Private;

protected:
    explicit Recordset(std::unique_ptr<Private> d);

private:
    friend class Field;
    std::unique_ptr<Private> d_;
};

/// The rows of a recordset, read in pages as a grid shows them. The row keys are taken at making;
/// the values of a page when one of its rows is asked for. Read failures are thrown from load
/// alone, so that a model may ask for rows inside the toolkit's frames without an exception passing
/// there.
class RecordsetPages
{
public:
    virtual ~RecordsetPages() = default;
    virtual int rowCount() const = 0;
    virtual RowKey keyAt(int row) const = 0;
    /// -1 where no such row exists.
    virtual int rowOf(const RowKey& key) const = 0;
    /// True where the row's values have been read.
    virtual bool isLoaded(int row) const = 0;
    /// Reads the page around the row. Throws what the engine throws.
    virtual void load(int row) = 0;
    /// The value of a loaded row's field, as Field::Value gives it; invalid where the row is not
    /// loaded or no longer exists.
    virtual QVariant value(int row, int ordinal) const = 0;
    /// Follow-ups of what the recordset's observer hears.
    virtual void appendRow(const RowKey& key) = 0;
    virtual void removeRow(int row) = 0;
    /// Forgets the values of a row, so that the next load reads them anew.
    virtual void forget(int row) = 0;
};

} // namespace dao
