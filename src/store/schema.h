#pragma once

#include "platform/dao/types.h"

#include <vector>

namespace store {

/// One table as the delivered store has it: its fields by ordinal, its primary key first among its
/// indexes. Everything that creates, checks or fills a store goes by this description.
struct TableSchema
{
    QString name;
    std::vector<dao::FieldInfo> fields;
    std::vector<dao::IndexInfo> indexes;

    /// The ordinal of the field with the name, in any case; -1 where there is none.
    int ordinalOf(const QString& field) const;
};

/// The eleven tables in the order in which they are created.
const std::vector<TableSchema>& schema();

/// The table with the name, in any case; null where the schema has none.
const TableSchema* tableSchema(const QString& name);

/// A part of a window with the names of its two lists.
struct PartLists
{
    QString kindTable;
    QString colorTable;
};

/// The lists by part index: 0 frame, 1 sash, 2 glass, 3 mesh.
const std::vector<PartLists>& partLists();

/// The names of the eight signed deductions of a series, in the order in which the table, the
/// screen and the computation take them: width and height of frame, sash, glass, mesh.
const QStringList& deductionFields();

} // namespace store
