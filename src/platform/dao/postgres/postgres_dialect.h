#pragma once

#include "platform/dao/engine/dialect.h"

namespace dao::postgres {

/// The SQL of PostgreSQL. Every table has an additional identity column that contains the row ids.
class PostgresDialect final : public Dialect
{
public:
    static const PostgresDialect& instance();

    QString rowNumber(const TableInfo& table) const override;
    QString sorted(const FieldInfo& field, const QString& column) const override;
    QString joined(const QString& select) const override;
    QString firstOf(const QString& joined) const override;
    QString indexesQuery() const override;
    /// Returns a query for the schema rows of all tables and views, which tablesOf converts. They
    /// are in the order of creation.
    QString tablesQuery() const;
    QString rowNumberColumn() const override;
    /// Returns a query for the objects that neither the program nor the server's setup makes, or
    /// that were changed. Its result has a row (kind, name, table) for each object. $1 is the body
    /// of the counters' function.
    static QString foreignObjectsQuery();
    static QString counterFunctionBody();
    /// Returns an expression that is true if the role owns the counters of the store in the current
    /// schema and may create tables there.
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
