#pragma once

#include "platform/dao/engine/dialect.h"

namespace dao::sqlite {

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

protected:
    std::span<const TypeName> typeNames() const override;
    QString declaredType(const FieldInfo& field) const override;
    QStringList counterStatements(const QString& table, const QString& field) const override;
};

} // namespace dao::sqlite
