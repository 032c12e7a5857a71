#pragma once

#include "platform/dao/engine/session.h"
#include "platform/dao/query.h"

#include <optional>
#include <span>

namespace dao {

/// A row as it was read.
struct StoredRow
{
    RowNumber number = 0;
    StoredValues values;
};

/// Rows from the columns that TableRows selects: the row's number, then its values.
StoredRow taken(StoredValues&& columns);
std::vector<StoredRow> taken(std::vector<StoredValues>&& rows);

/// The ordinals of the fields that rows are ordered by, ascending, rows of equal values in the
/// order in which they were stored; none for the table's own order.
using RowOrder = std::vector<int>;

/// Whole numbers, one after the other, of which each row has one.
struct KeyRun
{
    qint64 first = 0;
    std::size_t count = 0;
};

/// The statements over the rows of one table, in SQL that every engine takes. Each call runs one
/// statement (next and previous a few look-ups) and leaves nothing open.
class TableRows
{
public:
    TableRows(const Session& session, TableInfo table);

    const TableInfo& table() const { return table_; }
    /// Throws TooFewParameters (3061) for a name that is no field.
    int expectField(const QString& name) const;

    /// The numbers of all rows that meet the condition, in order.
    RowNumbers numbers(Session& session, const std::optional<SelectQuery::Condition>& where,
                       const RowOrder& order) const;
    /// The same with the first row, read in the same look.
    struct Listed
    {
        RowNumbers numbers;
        std::optional<StoredRow> first;
    };
    Listed listed(Session& session, const std::optional<SelectQuery::Condition>& where,
                  const RowOrder& order) const;
    /// The first rows that meet the condition, in order, at most `limit` of them, and how many rows
    /// meet it. One statement, so both are of one moment.
    struct Beginning
    {
        std::size_t total = 0;
        std::vector<StoredRow> rows;
    };
    Beginning beginning(Session& session, const std::optional<SelectQuery::Condition>& where,
                        const RowOrder& order, int limit) const;
    /// All rows that meet the condition, in order, read by one statement.
    std::vector<StoredRow> all(Session& session, const std::optional<SelectQuery::Condition>& where,
                               const RowOrder& order) const;
    /// The values of a field that is unique, where they are whole numbers without gaps and none of
    /// them is Null; costs a few look-ups and no scan.
    std::optional<KeyRun> keyRun(Session& session, int key) const;
    /// The rows whose unique field lies between these two, in no order.
    std::vector<StoredRow> rowsOfKeys(Session& session, int key, qint64 first, qint64 last) const;
    int count(Session& session) const;
    bool isEmpty(Session& session) const;

    std::optional<StoredRow> fetch(Session& session, RowNumber number) const;
    /// In the order of the numbers; a row that no longer exists is absent.
    std::vector<std::optional<StoredRow>> fetch(Session& session,
                                                std::span<const RowNumber> numbers) const;

    std::optional<StoredRow> first(Session& session, const RowOrder& order) const;
    std::optional<StoredRow> last(Session& session, const RowOrder& order) const;
    /// The row behind or before the place of a row, which need not exist any more.
    std::optional<StoredRow> next(Session& session, const RowOrder& order,
                                  const StoredRow& from) const;
    std::optional<StoredRow> previous(Session& session, const RowOrder& order,
                                      const StoredRow& from) const;
    /// The first row in order whose first ordering field equals the stored value.
    std::optional<StoredRow> find(Session& session, const RowOrder& order,
                                  const QVariant& value) const;

    struct Assignment
    {
        int ordinal;
        QVariant stored;
    };
    RowNumber insert(Session& session, const std::vector<Assignment>& assignments) const;
    /// False where the row does not exist.
    bool update(Session& session, RowNumber number,
                const std::vector<Assignment>& assignments) const;
    bool remove(Session& session, RowNumber number) const;

private:
    enum class Direction { Forward, Backward };

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
    /// WHERE with the condition and its values; empty where there is none.
    Statement condition(const std::optional<SelectQuery::Condition>& where) const;
    /// SELECT of an expression of the rows that meet the condition, in order.
    Statement selection(const Session& session, const QString& selected,
                        const std::optional<SelectQuery::Condition>& where,
                        const RowOrder& order) const;
    Statement numbersStatement(Session& session, const std::optional<SelectQuery::Condition>& where,
                               const RowOrder& order) const;
    void addCondition(const SelectQuery::Condition& where, QStringList& conditions,
                      QVariantList& values) const;
    std::optional<StoredRow> pick(Session& session, const QStringList& conditions,
                                  const QVariantList& values, const QString& ordering) const;
    std::optional<StoredRow> neighbour(Session& session, const RowOrder& order,
                                       const StoredRow& from, Direction direction) const;

    TableInfo table_;
    QString name_;      ///< The table's name, quoted.
    QString rowNumber_; ///< The expression of a row's number.
    QString columns_;   ///< The row's number and all fields.
    QString select_;    ///< SELECT number and all fields FROM table
};

} // namespace dao
