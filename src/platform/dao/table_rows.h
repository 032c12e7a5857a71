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

/// Converts the columns that TableRows selects (the row id, then the values) to rows.
StoredRow taken(StoredValues&& columns);
std::vector<StoredRow> taken(std::vector<StoredValues>&& rows);

/// Returns the placeholder of a statement's parameter, counted from 1.
QString parameter(qsizetype number);
/// Returns the WHERE clause of these conditions; empty without conditions.
QString whereText(const QStringList& conditions);

/// The positions of the fields to sort by, ascending. Rows with equal values are in insertion
/// order. Empty for the table's own order.
using RowOrder = std::vector<int>;

/// A range of consecutive whole-number keys. Each key belongs to exactly one row.
struct KeyRun
{
    qint64 first = 0;
    std::size_t count = 0;
};

/// Reads and writes the rows of one table, in SQL that all engines accept. Each call executes one
/// statement (neighbour: a few key look-ups) and leaves no cursor open.
class TableRows
{
public:
    TableRows(const Session& session, TableInfo table);

    const TableInfo& table() const { return table_; }
    /// Returns the position of a field. Throws TooFewParameters (3061) if there is no such field.
    int expectField(const QString& name) const;

    /// Returns the ids of all rows that meet the condition, in order.
    RowNumbers numbers(Session& session, const Where& where, const RowOrder& order) const;
    /// The row ids as returned by numbers(), and the first row, read by the same statement.
    struct Listed
    {
        RowNumbers numbers;
        std::optional<StoredRow> first;
    };
    Listed listed(Session& session, const Where& where, const RowOrder& order) const;
    /// The first rows that meet the condition, in order, at most `limit` of them, and the number of
    /// all rows that meet it. Both are read by one statement and therefore from one snapshot.
    struct Beginning
    {
        std::size_t total = 0;
        std::vector<StoredRow> rows;
    };
    Beginning beginning(Session& session, const Where& where, const RowOrder& order,
                        int limit) const;
    /// Returns all rows that meet the condition, in order, read by one statement.
    std::vector<StoredRow> all(Session& session, const Where& where, const RowOrder& order) const;
    /// Returns the range of values of a unique field if they are whole numbers without gaps and
    /// without Null. Costs a few key look-ups and a count.
    std::optional<KeyRun> keyRun(Session& session, int key) const;
    /// Returns the rows whose unique field is between these values, in any order.
    std::vector<StoredRow> rowsOfKeys(Session& session, int key, qint64 first, qint64 last) const;
    int count(Session& session) const;
    bool isEmpty(Session& session) const;

    std::optional<StoredRow> fetch(Session& session, RowNumber number) const;
    /// Returns the rows in the order of the given row ids. A row that no longer exists is nullopt.
    std::vector<std::optional<StoredRow>> fetch(Session& session,
                                                std::span<const RowNumber> numbers) const;

    enum class Direction { Forward, Backward };
    /// Returns the row that comes first in this direction: the first or the last row of the order.
    std::optional<StoredRow> start(Session& session, const RowOrder& order,
                                   Direction direction) const;
    /// Returns the row after (forward) or before the given row, which may have been deleted.
    std::optional<StoredRow> neighbour(Session& session, const RowOrder& order,
                                       const StoredRow& from, Direction direction) const;
    /// Returns the first row, sorted by `order`, whose first sort field equals `value`.
    std::optional<StoredRow> find(Session& session, const RowOrder& order,
                                  const QVariant& value) const;

    struct Assignment
    {
        int ordinal;
        QVariant stored;
    };
    RowNumber insert(Session& session, const std::vector<Assignment>& assignments) const;
    /// Returns false if the row does not exist.
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
    /// Returns a WHERE clause with its values, or an empty statement without a condition.
    Statement condition(const Where& where) const;
    /// Returns a SELECT of an expression over the rows that meet the condition, in order.
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
