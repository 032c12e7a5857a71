#pragma once

#include "platform/dao/engine/types.h"

#include <vector>

namespace dao {
class Database;
}

namespace store {

/// The definition of one table of the store: its name, its fields in the order of their ordinals,
/// and its indexes with the primary key first. All code that creates, checks or fills a store uses
/// this definition.
struct TableSchema
{
    QString name;
    std::vector<dao::FieldInfo> fields;
    std::vector<dao::IndexInfo> indexes;

    /// Returns the ordinal of the table's field with this name, ignoring case, or -1 if the table
    /// has no such field.
    int ordinalOf(const QString& field) const;
};

/// Returns the definitions of the store's eleven tables, in the order in which the tables are
/// created.
const std::vector<TableSchema>& schema();

/// Returns the definitions of the program's own tables, whose names begin with "zomrel_".
/// dao::TableDefs, which lists the tables of a database, omits them. The program creates each of
/// them when it first needs it, so a store may lack any of them.
const std::vector<TableSchema>& ownTables();

/// Returns the definitions of the store's eleven tables, followed by those of the program's own
/// tables.
std::vector<TableSchema> wholeSchema();

/// Creates the table with its fields and indexes. Throws any error of the SQL engine, for example
/// if the table already exists.
void createTable(dao::Database& database, const TableSchema& table);

/// Returns the definition of the table with this name, ignoring case. Returns nullptr if none of
/// the store's eleven tables has this name.
const TableSchema* tableSchema(const QString& name);

/// The names of the two lookup tables of a window part: one for its kinds and one for its colours.
struct PartLists
{
    QString kindTable;
    QString colorTable;
};

/// Returns the names of the lookup tables of each part. The index is the part: 0 frame, 1 sash, 2
/// glass, 3 mesh.
const std::vector<PartLists>& partLists();

/// Returns the names of the eight deduction fields of a series: width and height of the frame, then
/// of the sash, the glass and the mesh. The table Serials, the form for series and the computation
/// of cut sizes use the same order.
const QStringList& deductionFields();

} // namespace store
