#pragma once

#include "platform/dao/engine/dialect.h"

namespace dao::postgres {

/// A store in a PostgreSQL schema. Every table has one column more than it shows, an identity that
/// numbers its rows in the order in which they were stored.
class PostgresDialect final : public Dialect
{
public:
    static const PostgresDialect& instance();

    QString rowNumber(const TableInfo& table) const override;
    QString sorted(const FieldInfo& field, const QString& column) const override;
    QString joined(const QString& select) const override;
    QString firstOf(const QString& joined) const override;
    QString indexesQuery() const override;
    /// The rows of all tables and views that tablesOf takes, in the order of creation.
    QString tablesQuery() const;
    QString rowNumberColumn() const override;

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
