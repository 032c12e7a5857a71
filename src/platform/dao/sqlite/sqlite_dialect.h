#pragma once

#include "platform/dao/engine/dialect.h"

namespace dao::sqlite {

/// The name of the internal table of counters. The table has one row with the last number for each
/// table with a counter field.
constexpr QLatin1StringView counterTable("zomrel_counters");

/// A part of the error message that SQLite reports when a counter has no number left. The program
/// recognizes the error by this text.
constexpr QLatin1StringView counterExhausted("has given its last number");

/// Creates the SQL texts for SQLite. Columns are declared with the store's own type names, which
/// SQLite does not enforce.
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
    /// Returns a query whose result describes the fields of the table or view with the
    /// case-insensitive name $1. The function tablesOf converts this result.
    QString tableQuery() const;
    QStringList counterStatements(const QString& table, const QString& field) const override;

protected:
    std::span<const TypeName> typeNames() const override;
    QString declaredType(const FieldInfo& field) const override;
};

/// Returns the statement that creates the table of counters if the table does not exist.
QString counterTableMaking();

/// These functions return the names of the triggers that run after an INSERT and after an UPDATE of
/// the counter field.
QString insertTriggerName(const QString& table, const QString& field);
QString updateTriggerName(const QString& table, const QString& field);

/// Returns the SQL expression for the highest number in a column. The result of the expression is a
/// whole number even if the column contains texts.
QString highestStored(const QString& table, const QString& field);
/// Returns the SQL expression for the last number of a table's counter, which is the highest number
/// that was assigned or stored explicitly. The result of the expression is 0 if the table of
/// counters has no row for that table.
QString lastGiven(const QString& table);

} // namespace dao::sqlite
