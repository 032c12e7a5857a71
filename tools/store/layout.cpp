#include "tools/store/layout.h"

#include "platform/dao/database.h"
#include "platform/dao/table_copy.h"

#include <algorithm>

namespace storetools {

namespace {

store::TableSchema schemaOf(const dao::TableDef& table)
{
    store::TableSchema found{.name = table.Name(), .fields = {}, .indexes = {}};
    for (int field = 0; field < table.Fields().Count(); ++field)
        found.fields.push_back(table.Fields()(field).info());
    for (int index = 0; index < table.indexes().Count(); ++index)
        found.indexes.push_back(table.indexes()(index).info());
    return found;
}

} // namespace

Layout layoutOf(dao::Database& database)
{
    Layout layout;
    const dao::TableDefs tables = database.tableDefs();
    for (int i = 0; i < tables.Count(); ++i)
        layout.push_back(schemaOf(tables(i)));
    for (const QString& own : dao::ownTables(database))
        layout.push_back(schemaOf(tables(own)));
    return layout;
}

const store::TableSchema* tableIn(const Layout& layout, const QString& name)
{
    const auto found = std::find_if(layout.begin(), layout.end(),
                                    [&](const auto& table) { return table.name == name; });
    return found == layout.end() ? nullptr : &*found;
}

} // namespace storetools
