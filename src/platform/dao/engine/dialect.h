#pragma once

#include "platform/dao/engine/types.h"

#include <span>

namespace dao {

/// Creates the SQL texts of one engine; it has no connection. SQL that is the same for all engines
/// (NULLS FIRST, quoted names, parameters $1, $2 and so on) is in this class; the virtual functions
/// return what differs.
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
    /// a built-in row id. The column is not a field of the table.
    virtual QString rowNumberColumn() const { return {}; }
    /// Returns the SQL expression for the row id of a new row, which no earlier row has had.
    /// Returns an empty text if the engine itself never reuses a row id.
    virtual QString newRowNumber(const TableInfo&) const { return {}; }
    /// Returns the SQL expression for the next number of a counter that has no trigger or identity.
    virtual QString newCounterValue(const TableInfo& table, const FieldInfo& counter) const;
    /// Returns the SQL expression to sort and compare a field by. Texts are sorted by code point.
    virtual QString sorted(const FieldInfo&, const QString& column) const { return column; }
    /// Returns a statement that joins the values of the ordered SELECT, which has one column, with
    /// commas. Its result is one row with one text, or Null if the SELECT finds no row.
    virtual QString joined(const QString& select) const = 0;
    /// Returns the SQL expression for the first number in the text of joined().
    virtual QString firstOf(const QString& joined) const = 0;

    /// The statements that create a table. Rows are copied faster before its indexes and counters
    /// exist.
    struct TableMaking
    {
        QStringList before; ///< The statements to run before rows are copied.
        QStringList after;  ///< The statements that create the indexes and counters.
    };
    TableMaking createTable(const TableInfo& table, const std::vector<IndexInfo>& indexes) const;
    QString createIndex(const QString& table, const IndexInfo& index) const;
    QStringList addField(const QString& table, const FieldInfo& field) const;

    /// Returns a query for the indexes of table $1. Its result has a row (index name, is primary,
    /// is unique, field name) for each field of each index. The primary key comes first, the other
    /// indexes follow in the order of creation.
    virtual QString indexesQuery() const = 0;
    std::vector<IndexInfo> indexesOf(const QString& table,
                                     const std::vector<StoredValues>& rows) const;

    /// Converts schema rows to tables and views with their fields. Each row describes one field:
    /// (table name, is a table, field name, field type, is required, is a counter, is numbered by
    /// the engine).
    std::vector<TableInfo> tablesOf(const std::vector<StoredValues>& rows) const;

protected:
    struct TypeName
    {
        QLatin1StringView name;
        DataType type;
    };
    /// Returns the type names that occur in the engine's schema. The first name of each type is the
    /// one that new fields get. A field whose type name is not in the list counts as a text field
    /// without a size.
    virtual std::span<const TypeName> typeNames() const = 0;
    /// Returns the type in the definition of a new field: its name and the size of a text.
    virtual QString declaredType(const FieldInfo& field) const;
    /// Returns the SQL that follows the column type in the definition of a column that counts up.
    virtual QString counterClause() const { return {}; }
    /// Returns statements that must run before the field is created.
    virtual QStringList beforeField(const FieldInfo&) const { return {}; }
    /// Returns the statements that create the triggers of a counter.
    virtual QStringList counterStatements(const QString& table, const QString& field) const = 0;
    /// Returns the definition of the column of row ids in CREATE TABLE.
    virtual QString rowNumberDefinition() const { return {}; }
    /// Returns the list of columns for CREATE INDEX.
    virtual QString indexColumns(const IndexInfo& index) const { return quoted(index.fields); }

private:
    QString fieldDefinition(const FieldInfo& field) const;
    void readType(const QString& declared, FieldInfo& field) const;
};

} // namespace dao
