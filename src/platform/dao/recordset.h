#pragma once

#include "platform/dao/engine/types.h"

#include <memory>
#include <vector>

namespace dao {

class Database;
class Recordset;
class RecordsetPages;
class Session;

/// A field of a recordset's current row. This lightweight handle is valid while its recordset
/// exists. It always refers to the row that is current at the time of use.
class Field
{
public:
    Field(Recordset& recordset, int ordinal) : recordset_(&recordset), ordinal_(ordinal) {}

    const QString& Name() const { return info().name; }
    DataType Type() const { return info().type; }
    /// Returns the declared maximum length of a text field in characters.
    int Size() const { return info().size; }

    /// Returns the value of the current row, or of the row that is being added or edited. The
    /// QVariant holds an int for whole numbers and counters, -1 or 0 for a Boolean, a double, a
    /// QString, a QDate (a QDateTime if there is a time part), and is invalid for Null. Throws
    /// NoCurrentRecord (3021) without a current row, and RecordDeleted (3167) if the current row is
    /// deleted.
    QVariant Value() const;

    /// Assigns a value to the row that is being added or edited, and converts it to the field's
    /// type immediately. Whole numbers round half to even. Throws UpdateWithoutEdit (3020) outside
    /// of AddNew and Edit, DataTypeConversion (3421) for a text that is not a number or date
    /// (including the empty text), Overflow (6) for a number outside the type's range, and
    /// FieldTooSmall (3163) for a text longer than Size.
    void SetValue(const QVariant& value);

private:
    const FieldInfo& info() const;

    Recordset* recordset_;
    int ordinal_;
};

/// Observes one recordset. The data control implements it.
class RecordsetObserver
{
public:
    virtual ~RecordsetObserver() = default;
    /// Called before every move (Move..., Seek, moveToKey), even if the row stays the same, and
    /// before a Delete. On MoveLast all rows have already been read. A refused move causes no call.
    /// An exception from this function prevents the move.
    virtual void currentAboutToChange() = 0;
    /// Called after every move, after SetIndex and Requery, and when the first row is added to an
    /// empty recordset. The current row may be another one or none. Not called after a Delete,
    /// which calls rowDeleted.
    virtual void currentChanged() = 0;
    /// Called after a row was added, changed or deleted through this recordset.
    virtual void rowAdded(const RowKey& key) = 0;
    virtual void rowUpdated(const RowKey& key) = 0;
    virtual void rowDeleted(const RowKey& key) = 0;
};

/// A table-type recordset or a dynaset. After opening, the first row is current if there is one.
///
/// A table-type recordset always shows the live table. Its order is that of its Index, or the
/// table's own order without one. RecordCount is exact. Each move and each Seek costs one key
/// lookup. The lookup of the first row, after opening and after SetIndex, is delayed until the row
/// is needed.
///
/// A dynaset reads its row keys once, when it is opened, in the order of the query. Rows with equal
/// sort values are in insertion order. RecordCount counts the rows that have been reached: 0
/// without rows, 1 after opening, all after MoveLast, and otherwise up to the farthest row that was
/// current. Rows that a bound grid has shown count as reached, too (markReached). Rows added
/// through the dynaset are counted and placed at its end. Rows deleted through it are no longer
/// counted.
///
/// A row's values are read when it becomes current, and again by Move(0) and Edit. No database
/// cursor stays open between calls, so a recordset never holds a lock on the store.
///
/// All functions except Type, database and setObserver throw ObjectClosed (3420) after the Database
/// has been closed.
class Recordset : public std::enable_shared_from_this<Recordset>
{
public:
    class Private;
    explicit Recordset(std::unique_ptr<Private> d);
    ~Recordset();
    Q_DISABLE_COPY_MOVE(Recordset)

    RecordsetType Type() const;
    /// Returns nullptr after this recordset has been closed.
    const std::shared_ptr<Database>& database() const;

    int RecordCount();
    bool isBof() const;
    bool isEof() const;
    /// Returns true if there is a current row that can be read.
    bool hasCurrent() const;

    /// These functions change the current row. Each move discards the assignments since AddNew or
    /// Edit that no Update has written. MoveFirst and MoveLast throw NoCurrentRecord (3021) on an
    /// empty recordset; so do MoveNext at the end and MovePrevious at the beginning. After a
    /// Delete, MoveNext goes to the row after the deleted one.
    void MoveFirst();
    void MoveLast();
    void MoveNext() { Move(1); }
    void MovePrevious() { Move(-1); }
    /// Moves by this number of rows. Move(0) reads the current row's values again.
    void Move(int rows);

    /// Sets the order to one of the table's indexes and makes the first row current. Throws
    /// NotAnIndex (3015) for an unknown name, and OperationNotSupported (3251) on a dynaset.
    void SetIndex(const QString& name);
    QString Index() const;
    /// Makes the first row whose index value equals the key current. If there is none, NoMatch
    /// becomes true and no row is current. Throws NoCurrentIndex (3019) without an Index, and
    /// OperationNotSupported (3251) on a dynaset and for any comparison except "=".
    void Seek(const QString& comparison, const QVariant& key);
    bool NoMatch() const;

    /// Starts a new row for assignments. The current row stays current, even after Update; only in
    /// an empty recordset the new row becomes current.
    void AddNew();
    /// Starts editing the current row and reads its values again. Throws NoCurrentRecord (3021) and
    /// RecordDeleted (3167).
    void Edit();
    /// Writes the new or edited row with one statement. An Edit without changed values writes
    /// nothing. Throws UpdateWithoutEdit (3020) outside of AddNew and Edit, DuplicateKey (3022),
    /// ReadOnly (3027), Locked (3260), FieldRequired (3314) and other store errors; the store is
    /// then unchanged.
    void Update();
    void CancelUpdate();
    /// Deletes the current row. It stays current until the next move, but reading it throws
    /// RecordDeleted (3167).
    void Delete();

    int FieldCount() const { return static_cast<int>(fieldInfos().size()); }
    /// Returns a field by case-insensitive name or by position, counted from 0. Throws ItemNotFound
    /// (3265) for an unknown field.
    Field Fields(const QString& name);
    Field Fields(int ordinal);
    const std::vector<FieldInfo>& fieldInfos() const;

    /// Runs the query again and makes the first row current.
    void Requery();
    /// Releases the Database. All later calls throw ObjectClosed (3420).
    void Close();

    /// Functions for bound controls ---------------------------------------------------------------

    /// Sets the only observer; nullptr removes it. The observer must outlive the recordset or
    /// remove itself.
    void setObserver(RecordsetObserver* observer);
    /// Returns the current row's key, or an invalid key if there is no current row.
    RowKey currentKey() const;
    /// Makes the row with this key current and notifies the observer like any move. Returns false
    /// and changes nothing if the recordset has no such row.
    bool moveToKey(const RowKey& key);
    /// Returns an independent reader of the same rows in the same order, for grids. Using it
    /// neither moves this recordset nor changes RecordCount.
    std::unique_ptr<RecordsetPages> pages();
    /// Counts the first `count` rows as reached, as if the last of them had been current, without
    /// reading or moving. Has no effect on a table-type recordset. Does not throw, even on a closed
    /// recordset.
    void markReached(int count) noexcept;
    /// Runs the query again for a data control's Refresh. The same number of rows counts as reached
    /// as before, or all rows if all had been reached.
    void requeryAsFarAsReached();

private:
    friend class Field;
    /// Returns the recordset's state. Throws ObjectClosed (3420) if the recordset or its Database
    /// has been closed.
    Private& live() const;
    /// Returns the state like live, after the delayed lookup of the first row.
    Private& settled() const;

    std::unique_ptr<Private> d_;
};

/// The rows of a recordset, read in pages for a grid. The constructor reads the row keys; load
/// reads the values of one page. Only load throws read errors, so a model can call the other
/// functions while Qt is painting.
class RecordsetPages
{
public:
    virtual ~RecordsetPages() = default;
    virtual int rowCount() const = 0;
    virtual RowKey keyAt(int row) const = 0;
    /// Returns the position of the row with this key, or -1 if there is none.
    virtual int rowOf(const RowKey& key) const = 0;
    /// Returns true if the row's values have been read.
    virtual bool isLoaded(int row) const = 0;
    /// Reads the page that contains the row. Throws any error of reading.
    virtual void load(int row) = 0;
    /// Returns a field value like Field::Value, or an invalid value if the row is not loaded or no
    /// longer exists.
    virtual QVariant value(int row, int ordinal) const = 0;
    /// These functions must be called when the recordset's observer is told of an added or deleted
    /// row.
    virtual void appendRow(const RowKey& key) = 0;
    virtual void removeRow(int row) = 0;
    /// Discards the values of a row, so that the next load reads them again.
    virtual void forget(int row) = 0;
};

} // namespace dao
