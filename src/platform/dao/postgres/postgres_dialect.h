#pragma once

#include "platform/dao/engine/dialect.h"

namespace dao::postgres {

/// Creates the SQL texts for PostgreSQL. Every table has an additional identity column that
/// contains the row ids.
class PostgresDialect final : public Dialect
{
public:
    static const PostgresDialect& instance();

    QString rowNumber(const TableInfo& table) const override;
    QString sorted(const FieldInfo& field, const QString& column) const override;
    QString joined(const QString& select) const override;
    QString firstOf(const QString& joined) const override;
    QString indexesQuery() const override;
    /// Returns a query whose result describes the fields of all tables and views, in the order of
    /// creation. The function tablesOf converts this result.
    QString tablesQuery() const;
    QString rowNumberColumn() const override;
    /// Returns a query for the database objects that neither the program nor the setup of the
    /// server creates, and for the triggers of the program that were changed. The result has a row
    /// (kind, name, table) for each object. $1 is the body of the trigger function for counters.
    static QString foreignObjectsQuery();
    static QString counterFunctionBody();
    /// Returns an SQL expression that is true if the current role owns the trigger function for
    /// counters in the current schema and may create tables there.
    static QString ownsCounters();

protected:
    std::span<const TypeName> typeNames() const override;
    QString declaredType(const FieldInfo& field) const override;
    QString counterClause() const override;
    QStringList beforeField(const FieldInfo& field) const override;
    QStringList counterStatements(const QString& table, const QString& field) const override;
    QString rowNumberDefinition() const override;
    QString indexColumns(const IndexInfo& index) const override;
};

} // namespace dao::postgres
