#pragma once

#include "platform/dao/engine/session.h"
#include "platform/dao/query.h"

#include <optional>
#include <span>

namespace dao {

/// A row with its stored values.
struct StoredRow
{
    RowNumber number = 0;
    StoredValues values;
};

/// These functions convert rows of a query result to StoredRow objects. The first column of the
/// result is the row id, and the other columns are the values.
StoredRow taken(StoredValues&& columns);
std::vector<StoredRow> taken(std::vector<StoredValues>&& rows);

/// Returns the SQL text of a parameter, such as $1. Parameters are counted from 1.
QString parameter(qsizetype number);
/// Returns a WHERE clause that joins the conditions in the list with AND, or an empty text if the
/// list is empty.
QString whereText(const QStringList& conditions);

/// The order of rows: the positions of the fields by which the rows are sorted, ascending. Rows
/// with equal values are in insertion order. If the list is empty, all rows are in insertion order.
using RowOrder = std::vector<int>;

/// A range of consecutive whole-number keys. Each key of the range belongs to exactly one row.
struct KeyRun
{
    qint64 first = 0;
    std::size_t count = 0;
};

/// Reads and writes the rows of one table, in SQL that all engines accept. Each function that reads
/// executes one statement, except for neighbour, which executes a few look-ups of a key. No
/// function leaves a cursor open.
class TableRows
{
public:
    TableRows(const Session& session, TableInfo table);

    const TableInfo& table() const { return table_; }
    /// Returns the position of the field with this name. Throws TooFewParameters (3061) if there is
    /// no such field.
    int expectField(const QString& name) const;

    /// Returns the row ids of all rows that meet the condition, in the given order.
    RowNumbers numbers(Session& session, const Where& where, const RowOrder& order) const;
    /// The row ids of all rows that meet the condition, in the given order, and the first of these
    /// rows. One statement reads all this.
    struct Listed
    {
        RowNumbers numbers;
        std::optional<StoredRow> first;
    };
    Listed listed(Session& session, const Where& where, const RowOrder& order) const;
    /// The number of all rows that meet a condition, and the first of these rows in the given
    /// order, at most `limit` rows. One statement reads the number and the rows, so they come from
    /// one snapshot.
    struct Beginning
    {
        std::size_t total = 0;
        std::vector<StoredRow> rows;
    };
    Beginning beginning(Session& session, const Where& where, const RowOrder& order,
                        int limit) const;
    /// Returns all rows that meet the condition, in the given order. One statement reads all rows.
    std::vector<StoredRow> all(Session& session, const Where& where, const RowOrder& order) const;
    /// Returns the range of the values of a unique field if all values are whole numbers without
    /// gaps. Returns nothing if the values have gaps or if one is Null or not a whole number. Costs
    /// a few look-ups of a key and a count of the rows.
    std::optional<KeyRun> keyRun(Session& session, int key) const;
    /// Returns the rows in which the unique field has a value from `first` to `last`, in any order.
    std::vector<StoredRow> rowsOfKeys(Session& session, int key, qint64 first, qint64 last) const;
    int count(Session& session) const;
    bool isEmpty(Session& session) const;

    std::optional<StoredRow> fetch(Session& session, RowNumber number) const;
    /// Returns the rows with the given row ids, in the order of these row ids. The element for a
    /// row that no longer exists is nullopt.
    std::vector<std::optional<StoredRow>> fetch(Session& session,
                                                std::span<const RowNumber> numbers) const;

    enum class Direction { Forward, Backward };
    /// Returns the first row of the order (Forward) or the last row of the order (Backward).
    std::optional<StoredRow> start(Session& session, const RowOrder& order,
                                   Direction direction) const;
    /// Returns the row that follows `from` in the order (Forward) or precedes it (Backward). The
    /// row `from` may have been deleted.
    std::optional<StoredRow> neighbour(Session& session, const RowOrder& order,
                                       const StoredRow& from, Direction direction) const;
    /// Returns the first row, in the given order, whose first sort field equals `value`.
    std::optional<StoredRow> find(Session& session, const RowOrder& order,
                                  const QVariant& value) const;

    struct Assignment
    {
        int ordinal;
        QVariant stored;
    };
    RowNumber insert(Session& session, const std::vector<Assignment>& assignments) const;
    /// Changes the row with this row id. Returns false if the row does not exist.
    bool update(Session& session, RowNumber number,
                const std::vector<Assignment>& assignments) const;
    bool remove(Session& session, RowNumber number) const;

private:
    QString target(int ordinal) const;
    QString field(int ordinal) const;
    QString sortField(const Session& session, int ordinal) const;
    QString ordering(const Session& session, const RowOrder& order, std::size_t from,
                     Direction direction) const;
    struct Statement
    {
        QString sql;
        QVariantList values;
    };
    QString writtenRow(Session& session, qsizetype number) const;
    /// Returns a WHERE clause and the values of its parameters. The text of the clause is empty if
    /// there is no condition.
    Statement condition(const Where& where) const;
    /// Returns a SELECT of the expression `selected` for all rows that meet the condition, in the
    /// given order.
    Statement selection(const Session& session, const QString& selected, const Where& where,
                        const RowOrder& order) const;
    Statement numbersStatement(Session& session, const Where& where, const RowOrder& order) const;
    void addCondition(const SelectQuery::Condition& where, QStringList& conditions,
                      QVariantList& values) const;
    std::optional<StoredRow> pick(Session& session, const QStringList& conditions,
                                  const QVariantList& values, const QString& ordering) const;

    TableInfo table_;
    QString name_;      ///< The table's name, quoted.
    QString rowNumber_; ///< The SQL expression for the row id.
    QString columns_;   ///< The row id and all fields, separated by commas.
    QString select_;    ///< "SELECT columns_ FROM name_"
};

} // namespace dao
