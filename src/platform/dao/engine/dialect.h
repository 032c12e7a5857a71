#pragma once

#include "platform/dao/engine/types.h"

#include <span>

namespace dao {

/// The SQL of one engine: text alone, no connection. What all engines say in the same words (plain
/// SQL, NULLS FIRST, quoted names, parameters $1, $2 and so on) is said here; the rest is virtual.
class Dialect
{
public:
    virtual ~Dialect() = default;

    /// A name as SQL takes it, whatever characters it has.
    static QString quoted(const QString& name);
    static QString quoted(const QStringList& names);
    /// A text as an SQL literal.
    static QString literal(const QString& text);

    /// The expression for the internal row id of the table's rows.
    virtual QString rowNumber(const TableInfo& table) const = 0;
    /// The column of row ids in each table, if it is not the engine's own. It is no field.
    virtual QString rowNumberColumn() const { return {}; }
    /// The expression that an INSERT gives to the row id, so that no id is used twice; empty if the
    /// engine takes care of that.
    virtual QString newRowNumber(const TableInfo&) const { return {}; }
    /// The expression that an INSERT gives to an unassigned counter that does not count by itself.
    virtual QString newCounterValue(const TableInfo& table, const FieldInfo& counter) const;
    /// The expression that a field's column is ordered and compared by: texts by code point.
    virtual QString sorted(const FieldInfo&, const QString& column) const { return column; }
    /// A statement with one row and one column: the only column of the ordered SELECT, joined with
    /// commas; Null for no row.
    virtual QString joined(const QString& select) const = 0;
    /// The expression for the first number of a text that was joined so.
    virtual QString firstOf(const QString& joined) const = 0;

    QStringList createTable(const TableInfo& table, const std::vector<IndexInfo>& indexes) const;
    QString createIndex(const QString& table, const IndexInfo& index) const;
    QStringList addField(const QString& table, const FieldInfo& field) const;

    /// The indexes of table $1: a row (index name, is primary, is unique, field name) for each
    /// field of each index, the primary key first, the others in the order of creation.
    virtual QString indexesQuery() const = 0;
    std::vector<IndexInfo> indexesOf(const QString& table,
                                     const std::vector<StoredValues>& rows) const;

    /// Tables and views with their fields, from a row (table name, is a table, field name, field
    /// type, is required, is a counter, counts by itself) for each field.
    std::vector<TableInfo> tablesOf(const std::vector<StoredValues>& rows) const;

protected:
    struct TypeName
    {
        QLatin1StringView name;
        DataType type;
    };
    /// The names of types in the engine's schema. Any other type is a text without a size.
    virtual std::span<const TypeName> typeNames() const = 0;
    virtual QString declaredType(const FieldInfo& field) const = 0;
    /// What follows the type of a counter.
    virtual QString counterClause() const { return {}; }
    /// Statements that must run before a field is made.
    virtual QStringList beforeField(const FieldInfo&) const { return {}; }
    /// Statements that make a counter count.
    virtual QStringList counterStatements(const QString& table, const QString& field) const = 0;
    /// How CREATE TABLE makes the column of row ids.
    virtual QString rowNumberDefinition() const { return {}; }
    /// The columns of an index, as CREATE INDEX lists them.
    virtual QString indexColumns(const IndexInfo& index) const { return quoted(index.fields); }

private:
    QString fieldDefinition(const FieldInfo& field) const;
    void readType(const QString& declared, FieldInfo& field) const;
};

} // namespace dao
