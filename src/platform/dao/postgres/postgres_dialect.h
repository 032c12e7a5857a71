#pragma once

#include "platform/dao/engine/session.h"

/// How a store's tables stand in a PostgreSQL schema: what is read of the catalogue, and the
/// statements that make a table. Every table has a column more than it shows, which numbers its
/// rows in the order in which they were stored.
namespace dao::postgres {

extern const QString rowColumn;

/// A row for each field of each table and view (one without a field for a table that has none),
/// tables in the order of creation, fields by ordinal. tablesOf takes the rows.
QString tablesQuery();
std::vector<TableInfo> tablesOf(const std::vector<StoredValues>& rows);

/// The names, as "table.field", of the counters among the rows of tablesQuery that go on from an
/// assigned number.
QStringList sureCountersOf(const std::vector<StoredValues>& rows);

/// A row for each field of each index of the table, the primary key first, the others in the order
/// of creation. indexesOf takes the rows.
QString indexesQuery();
std::vector<IndexInfo> indexesOf(const QString& table, const std::vector<StoredValues>& rows);

QStringList createTable(const TableInfo& table, const std::vector<IndexInfo>& indexes);
QString createIndex(const QString& table, const IndexInfo& index);
QStringList addField(const QString& table, const FieldInfo& field);

} // namespace dao::postgres
