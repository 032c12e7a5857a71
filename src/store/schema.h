#pragma once

#include "platform/dao/engine/types.h"

#include <vector>

namespace dao {
class Database;
}

namespace store {

/// The definition of one table of the store: its fields by ordinal and its indexes, the primary key
/// first. All code that creates, checks or fills a store uses this definition.
struct TableSchema
{
    QString name;
    std::vector<dao::FieldInfo> fields;
    std::vector<dao::IndexInfo> indexes;

    /// Returns the ordinal of the field with this name, ignoring case, or -1 if there is none.
    int ordinalOf(const QString& field) const;
};

/// Returns the eleven tables in the order in which they are created.
const std::vector<TableSchema>& schema();

/// Returns the program's own tables, whose names begin with "zomrel_". Listings of a database do
/// not show them. A store may lack any of them; the code that uses a table creates it when needed.
const std::vector<TableSchema>& ownTables();

/// Returns the eleven tables followed by the program's own tables.
std::vector<TableSchema> wholeSchema();

/// Creates the table with its fields and indexes. Throws any error of the engine, in particular if
/// the table exists.
void createTable(dao::Database& database, const TableSchema& table);

/// Returns the one of the eleven tables with this name, ignoring case, or nullptr.
const TableSchema* tableSchema(const QString& name);

/// The names of a window part's two lookup tables.
struct PartLists
{
    QString kindTable;
    QString colorTable;
};

/// Returns the lookup tables by part index: 0 frame, 1 sash, 2 glass, 3 mesh.
const std::vector<PartLists>& partLists();

/// Returns the names of a series' eight deduction fields: the width and the height of the frame,
/// the sash, the glass and the mesh. The table, the screen and the computation use this order.
const QStringList& deductionFields();

} // namespace store
