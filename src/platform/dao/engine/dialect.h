#pragma once

#include "platform/dao/engine/types.h"

#include <span>

namespace dao {

/// Creates the SQL texts for one database engine. The class has no connection to a database. SQL
/// that is the same for all engines (NULLS FIRST, quoted names, parameters $1, $2 and so on) is in
/// this class. The virtual functions return the SQL that differs between the engines.
class Dialect
{
public:
    virtual ~Dialect() = default;

    /// Returns a name as a quoted SQL identifier. The name may contain any characters.
    static QString quoted(const QString& name);
    static QString quoted(const QStringList& names);
    /// Returns a text as an SQL string literal.
    static QString literal(const QString& text);

    /// Returns the SQL expression for the internal row id of the table's rows.
    virtual QString rowNumber(const TableInfo& table) const = 0;
    /// Returns the name of the column that contains the row ids, or an empty text if the engine has
    /// built-in row ids. A table definition does not list this column as a field.
    virtual QString rowNumberColumn() const { return {}; }
    /// Returns the SQL expression for the row id of a new row. No earlier row of the table has had
    /// this row id. Returns an empty text if the engine itself assigns the row id.
    virtual QString newRowNumber(const TableInfo&) const { return {}; }
    /// Returns the SQL expression for the next number of a counter field. The expression is used if
    /// neither a trigger nor an identity column of the store assigns the numbers.
    virtual QString newCounterValue(const TableInfo& table, const FieldInfo& counter) const;
    /// Returns the SQL expression with which a field is sorted and compared. Texts are sorted by
    /// code point.
    virtual QString sorted(const FieldInfo&, const QString& column) const { return column; }
    /// Returns a statement that joins the results of `select` to one text, separated by commas.
    /// `select` is an ordered SELECT of one column. The statement returns one row with the text, or
    /// with Null if `select` finds no row.
    virtual QString joined(const QString& select) const = 0;
    /// Returns the SQL expression for the first number in `joined`. `joined` is an SQL expression
    /// for a text of numbers that are separated by commas.
    virtual QString firstOf(const QString& joined) const = 0;

    /// The statements that create a new table (`before`), and the statements that create its
    /// indexes and counters (`after`). If rows are copied into the new table, they are copied in
    /// between, because copying is faster without indexes and counters.
    struct TableMaking
    {
        QStringList before; ///< The statements to run before rows are copied.
        QStringList after;  ///< The statements that create the indexes and counters.
    };
    TableMaking createTable(const TableInfo& table, const std::vector<IndexInfo>& indexes) const;
    QString createIndex(const QString& table, const IndexInfo& index) const;
    QStringList addField(const QString& table, const FieldInfo& field) const;

    /// Returns a query for the indexes of table $1. The result has a row (index name, is primary,
    /// is unique, field name) for each field of each index. The rows of the primary key come first.
    /// The rows of the other indexes follow in the order in which the indexes were created.
    virtual QString indexesQuery() const = 0;
    std::vector<IndexInfo> indexesOf(const QString& table,
                                     const std::vector<StoredValues>& rows) const;

    /// Converts the result of a query on the engine's schema to the definitions of tables and
    /// views. Each row of the result describes one field: (table name, is a table, field name,
    /// field type, is required, is a counter, gets its numbers from the store and not from the
    /// program).
    std::vector<TableInfo> tablesOf(const std::vector<StoredValues>& rows) const;

protected:
    struct TypeName
    {
        QLatin1StringView name;
        DataType type;
    };
    /// Returns the engine's type names, each with the field type that it declares. New fields get
    /// the first name of their type. A field with any other type name is treated as a text field
    /// without a size.
    virtual std::span<const TypeName> typeNames() const = 0;
    /// Returns the type in the definition of a new field: the type name and, for a text field, the
    /// size.
    virtual QString declaredType(const FieldInfo& field) const;
    /// Returns the SQL that follows the column type in the definition of a counter field.
    virtual QString counterClause() const { return {}; }
    /// Returns the statements that must be executed before the statement that creates this field.
    virtual QStringList beforeField(const FieldInfo&) const { return {}; }
    /// Returns the statements that create the triggers of a counter.
    virtual QStringList counterStatements(const QString& table, const QString& field) const = 0;
    /// Returns the definition of the row id column in CREATE TABLE, or an empty text if the engine
    /// has built-in row ids.
    virtual QString rowNumberDefinition() const { return {}; }
    /// Returns the list of the index columns in CREATE INDEX.
    virtual QString indexColumns(const IndexInfo& index) const { return quoted(index.fields); }

private:
    QString fieldDefinition(const FieldInfo& field) const;
    void readType(const QString& declared, FieldInfo& field) const;
};

} // namespace dao
