#pragma once

#include "platform/dao/engine/types.h"

#include <memory>
#include <vector>

namespace dao {

class Database;
class Recordset;
class RecordsetPages;
class Session;

/// A field of a recordset's current row. A Field object is valid while its recordset exists. The
/// object always refers to the row that is current at the time of use.
class Field
{
public:
    Field(Recordset& recordset, int ordinal) : recordset_(&recordset), ordinal_(ordinal) {}

    const QString& Name() const { return info().name; }
    DataType Type() const { return info().type; }
    /// Returns the declared maximum length of a text field in characters.
    int Size() const { return info().size; }

    /// Returns the value of the current row, or of the row that is being added or edited. The
    /// QVariant contains an int for a whole number or a counter, -1 or 0 for a Boolean, a double
    /// for a decimal, a QString for a text, and a QDate for a date (a QDateTime if there is a time
    /// of day). The QVariant is invalid for Null. Throws NoCurrentRecord (3021) if there is no
    /// current row, and RecordDeleted (3167) if the current row is deleted.
    QVariant Value() const;

    /// Assigns a value to the row that is being added or edited, and converts the value to the
    /// field's type immediately. A value for a whole-number field is rounded half to even. Throws
    /// UpdateWithoutEdit (3020) if neither AddNew nor Edit has been called, DataTypeConversion
    /// (3421) for a text that is not a number or date (including the empty text), Overflow (6) for
    /// a number outside the range of the type, and FieldTooSmall (3163) for a text longer than
    /// Size.
    void SetValue(const QVariant& value);

private:
    const FieldInfo& info() const;

    Recordset* recordset_;
    int ordinal_;
};

/// The interface of an object that observes one recordset. The data control implements this
/// interface.
class RecordsetObserver
{
public:
    virtual ~RecordsetObserver() = default;
    /// Called before every move (Move..., Seek, moveToKey), even if the move leads to the same row,
    /// and before a Delete. MoveLast counts all rows before it calls this function. Not called if
    /// the move is impossible, for example in an empty recordset. An exception from this function
    /// prevents the move.
    virtual void currentAboutToChange() = 0;
    /// Called after every move, after SetIndex and Requery, and when the first row is added to an
    /// empty recordset. Afterwards another row, the same row or no row may be current. Not called
    /// after a Delete, which calls rowDeleted instead.
    virtual void currentChanged() = 0;
    /// These functions are called after a row was added, changed or deleted through this recordset.
    virtual void rowAdded(const RowKey& key) = 0;
    virtual void rowUpdated(const RowKey& key) = 0;
    virtual void rowDeleted(const RowKey& key) = 0;
};

/// A table-type recordset or a dynaset. After opening, the first row is current if there is one.
///
/// A table-type recordset always shows the live table. The rows are in the order of the index that
/// SetIndex has set, or in the table's own order if no index is set. RecordCount is exact. Each
/// move and each Seek costs one look-up of a key. After opening and after SetIndex, the look-up of
/// the first row is delayed until the row is needed.
///
/// A dynaset reads its row keys once, when it is opened, in the order of the query. Rows with equal
/// sort values are in insertion order. RecordCount is the number of rows that have been reached: 0
/// if there are no rows, 1 after opening, all rows after MoveLast, and otherwise the rows up to the
/// farthest row that was current. Rows that a bound grid has shown also count as reached (see
/// markReached). A row that is added through the dynaset is counted and is placed at the end. A row
/// that is deleted through the dynaset is no longer counted.
///
/// The values of a row are read when the row becomes current, and again by Move(0) and Edit. No
/// database cursor stays open between calls, so a recordset never holds a lock on the store.
///
/// All functions except Type, database, setObserver and markReached throw ObjectClosed (3420) after
/// the Database has been closed.
class Recordset : public std::enable_shared_from_this<Recordset>
{
public:
    class Private;
    explicit Recordset(std::unique_ptr<Private> d);
    ~Recordset();
    Q_DISABLE_COPY_MOVE(Recordset)

    RecordsetType Type() const;
    /// Returns the Database of the recordset, or nullptr after the recordset has been closed.
    const std::shared_ptr<Database>& database() const;

    int RecordCount();
    bool isBof() const;
    bool isEof() const;
    /// Returns true if there is a current row that can be read.
    bool hasCurrent() const;

    /// MoveFirst, MoveLast, MoveNext, MovePrevious and Move make another row current. Each move
    /// discards the values that were assigned after AddNew or Edit and not stored by Update.
    /// MoveFirst and MoveLast throw NoCurrentRecord (3021) if the recordset is empty. MoveNext
    /// throws this error if the position is already after the last row, and MovePrevious if it is
    /// already before the first row. After a Delete, MoveNext goes to the row after the deleted
    /// row.
    void MoveFirst();
    void MoveLast();
    void MoveNext() { Move(1); }
    void MovePrevious() { Move(-1); }
    /// Moves the current position by this number of rows. Move(0) reads the current row's values
    /// again.
    void Move(int rows);

    /// Sets the order of the rows to that of an index of the table, and makes the first row
    /// current. Throws NotAnIndex (3015) for an unknown name, and OperationNotSupported (3251) for
    /// a dynaset.
    void SetIndex(const QString& name);
    QString Index() const;
    /// Makes the first row current whose index value equals the key. If there is no such row,
    /// NoMatch becomes true, and no row is current. Throws NoCurrentIndex (3019) if no index is
    /// set, and OperationNotSupported (3251) for a dynaset and for any comparison except "=".
    void Seek(const QString& comparison, const QVariant& key);
    bool NoMatch() const;

    /// Starts a new row to which values can be assigned. The row that was current before stays
    /// current, even after Update. Only in an empty recordset does Update make the new row current.
    void AddNew();
    /// Starts editing the current row and reads its values again. Throws NoCurrentRecord (3021) if
    /// there is no current row, and RecordDeleted (3167) if the current row is deleted.
    void Edit();
    /// Writes the new or edited row with one statement. After an Edit without changed values,
    /// Update writes nothing. Throws UpdateWithoutEdit (3020) if neither AddNew nor Edit has been
    /// called, RecordDeleted (3167) if the edited row is deleted, DuplicateKey (3022), ReadOnly
    /// (3027), Locked (3260), FieldRequired (3314) and other errors of the store. After an error
    /// the store is unchanged.
    void Update();
    void CancelUpdate();
    /// Deletes the current row. The deleted row stays current until the next move, but reading it
    /// throws RecordDeleted (3167).
    void Delete();

    int FieldCount() const { return static_cast<int>(fieldInfos().size()); }
    /// Returns the field with this case-insensitive name, or at this position, which is counted
    /// from 0. Throws ItemNotFound (3265) for an unknown field.
    Field Fields(const QString& name);
    Field Fields(int ordinal);
    const std::vector<FieldInfo>& fieldInfos() const;

    /// Runs the query of the recordset again and makes the first row current.
    void Requery();
    /// Closes the recordset and releases its Database. Later calls of its functions throw
    /// ObjectClosed (3420).
    void Close();

    /// Functions for bound controls ---------------------------------------------------------------

    /// Sets the only observer of the recordset. A nullptr removes the observer. The observer must
    /// outlive the recordset or remove itself.
    void setObserver(RecordsetObserver* observer);
    /// Returns the key of the current row, or an invalid key if there is no current row.
    RowKey currentKey() const;
    /// Makes the row with this key current and notifies the observer as for any other move. Returns
    /// false and changes nothing if the recordset does not contain the row.
    bool moveToKey(const RowKey& key);
    /// Returns an object with which a grid reads the same rows in the same order. Using this object
    /// neither moves the current row of the recordset nor changes RecordCount.
    std::unique_ptr<RecordsetPages> pages();
    /// Makes the first `count` rows count as reached (see RecordCount). The function neither reads
    /// these rows nor moves the current row. Has no effect on a table-type recordset. Does not
    /// throw, even on a closed recordset.
    void markReached(int count) noexcept;
    /// Runs the query again when a data control is refreshed. Afterwards the same number of rows
    /// counts as reached (see RecordCount) as before. If all rows had been reached before, all rows
    /// count as reached.
    void requeryAsFarAsReached();

private:
    friend class Field;
    /// Returns the internal state of the recordset. Throws ObjectClosed (3420) if the recordset or
    /// its Database has been closed.
    Private& live() const;
    /// Looks up the first row if its look-up was delayed, and returns the internal state. Throws
    /// the same errors as live().
    Private& settled() const;

    std::unique_ptr<Private> d_;
};

/// The rows of a recordset, read in pages for a grid. The rows and their order are determined when
/// the object is created, and the function load reads the values of one page. A model can call
/// rowCount, isLoaded and value while Qt is painting, because these functions do not read the store
/// and do not throw.
class RecordsetPages
{
public:
    virtual ~RecordsetPages() = default;
    virtual int rowCount() const = 0;
    virtual RowKey keyAt(int row) const = 0;
    /// Returns the position of the row with this key, or -1 if the recordset has no such row.
    virtual int rowOf(const RowKey& key) const = 0;
    /// Returns true if the values of the row are loaded.
    virtual bool isLoaded(int row) const = 0;
    /// Reads the page that contains the row from the store. Throws the errors of reading the store.
    virtual void load(int row) = 0;
    /// Returns a field value like Field::Value, or an invalid value if the row is not loaded or no
    /// longer exists.
    virtual QVariant value(int row, int ordinal) const = 0;
    /// The observer of the recordset must call appendRow after a row was added, and removeRow after
    /// a row was deleted.
    virtual void appendRow(const RowKey& key) = 0;
    virtual void removeRow(int row) = 0;
    /// Discards the values of a row, so that the next load reads them again.
    virtual void forget(int row) = 0;
};

} // namespace dao
