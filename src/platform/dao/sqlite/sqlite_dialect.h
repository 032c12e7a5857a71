#pragma once

#include "platform/dao/engine/dialect.h"

namespace dao::sqlite {

/// The engine's internal table of counters. It has one row for each table with a counter.
constexpr QLatin1StringView counterTable("zomrel_counters");

/// A part of SQLite's error message when a counter has no number left.
constexpr QLatin1StringView counterExhausted("has given its last number");

/// The SQL of SQLite. Columns are declared with the store's own type names, which SQLite does not
/// enforce.
class SqliteDialect final : public Dialect
{
public:
    static const SqliteDialect& instance();

    QString rowNumber(const TableInfo& table) const override;
    QString newRowNumber(const TableInfo& table) const override;
    QString newCounterValue(const TableInfo& table, const FieldInfo& counter) const override;
    QString joined(const QString& select) const override;
    QString firstOf(const QString& joined) const override;
    QString indexesQuery() const override;
    /// Returns a query for the schema rows of table or view $1 (case-insensitive), which tablesOf
    /// converts.
    QString tableQuery() const;
    QStringList counterStatements(const QString& table, const QString& field) const override;

protected:
    std::span<const TypeName> typeNames() const override;
    QString declaredType(const FieldInfo& field) const override;
};

/// Returns the statement that creates the table of counters if it does not exist.
QString counterTableMaking();

/// Return the names of the triggers after an INSERT and after an UPDATE of the counter field.
QString insertTriggerName(const QString& table, const QString& field);
QString updateTriggerName(const QString& table, const QString& field);

/// Returns the SQL expression for the highest number in a column. Its result is always a whole
/// number, also if the column contains texts.
QString highestStored(const QString& table, const QString& field);
/// Returns the SQL expression for the last number of the table's counter, or 0 if the table of
/// counters has no row for it.
QString lastGiven(const QString& table);

} // namespace dao::sqlite
