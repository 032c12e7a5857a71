#include "shop/bar_table.h"

#include "platform/dao/database.h"
#include "platform/dao/table_copy.h"
#include "platform/runtime/run_time_error.h"
#include "store/schema.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace shop {

namespace {

const store::TableSchema& barSchema()
{
    return store::ownTables().front();
}

bool hasBarTable(dao::Database& database)
{
    return dao::ownTables(database).contains(barSchema().name, Qt::CaseInsensitive);
}

bool isAlike(const dao::FieldInfo& found, const dao::FieldInfo& wanted)
{
    return found.type == wanted.type && found.size == wanted.size &&
           found.counter == wanted.counter;
}

void requireShape(dao::Database& database)
{
    const store::TableSchema& schema = barSchema();
    dao::TableDef table = database.tableDefs()(schema.name);
    const dao::FieldDefs fields = table.Fields();
    std::vector<dao::FieldInfo> found;
    for (int i = 0; i < fields.Count(); ++i)
        found.push_back(fields(i).info());
    for (const dao::FieldInfo& wanted : schema.fields) {
        const auto match = std::ranges::find_if(found, [&](const dao::FieldInfo& each) {
            return each.name.compare(wanted.name, Qt::CaseInsensitive) == 0;
        });
        if (match == found.end() || !isAlike(*match, wanted))
            throw RunTimeError(
                runtime::UnrecognizedFormat,
                u"The table %1 does not have the expected structure: field %2."_s.arg(schema.name,
                                                                                      wanted.name));
    }
}

[[noreturn]] void refuseRow(dao::Recordset& row, const QString& field)
{
    throw RunTimeError(runtime::DataTypeConversion,
                       u"The table %1 contains an invalid value in field %2 of row %3."_s.arg(
                           barSchema().name, field, row.Fields(u"Code"_s).Value().toString()));
}

GroupKey groupOf(dao::Recordset& row)
{
    const std::optional<Part> part = partNamed(row.Fields(u"Part"_s).Value().toString());
    if (!part || *part == Part::Glass)
        refuseRow(row, u"Part"_s);
    return {*part, row.Fields(u"Profile"_s).Value().toString(),
            row.Fields(u"Colour"_s).Value().toString()};
}

BarSettings settingsIn(dao::Recordset& row)
{
    BarSettings settings;
    for (const SettingColumn& column : settingColumns()) {
        const QVariant value = row.Fields(column.field).Value();
        if (!value.isValid() || !isAllowed(column, value.toDouble()))
            refuseRow(row, column.field);
        column.set(settings, value.toDouble());
    }
    if (!(settings.usable() > 0))
        refuseRow(row, u"Trim"_s);
    return settings;
}

void assign(dao::Recordset& row, const BarSettings& settings)
{
    for (const SettingColumn& column : settingColumns())
        row.Fields(column.field).SetValue(column.get(settings));
}

void writeRows(dao::Database& database, SettingsByGroup settings)
{
    const auto rows = database.OpenRecordset(barSchema().name, dao::dbOpenDynaset);
    for (; !rows->isEof(); rows->MoveNext()) {
        const auto changed = settings.find(groupOf(*rows));
        if (changed == settings.end())
            continue;
        rows->Edit();
        assign(*rows, changed->second);
        rows->Update();
        settings.erase(changed);
    }
    for (const auto& [group, each] : settings) {
        rows->AddNew();
        rows->Fields(u"Part"_s).SetValue(partName(group.part));
        rows->Fields(u"Profile"_s).SetValue(group.profile);
        rows->Fields(u"Colour"_s).SetValue(group.colour);
        assign(*rows, each);
        rows->Update();
    }
}

} // namespace

SettingsByGroup readBarTable(dao::Database& database)
{
    SettingsByGroup settings;
    if (!hasBarTable(database))
        return settings;
    requireShape(database);
    const auto rows = database.OpenRecordset(barSchema().name, dao::dbOpenDynaset);
    for (; !rows->isEof(); rows->MoveNext())
        settings[groupOf(*rows)] = settingsIn(*rows);
    return settings;
}

void writeBarTable(const QString& path, const SettingsByGroup& settings)
{
    // If this function throws, the connection is closed and the transaction is rolled back.
    const auto database = dao::DBEngine::instance().OpenDatabase(path);
    database->BeginTrans();
    if (hasBarTable(*database))
        requireShape(*database);
    else
        store::createTable(*database, barSchema());
    writeRows(*database, settings);
    database->CommitTrans();
}

} // namespace shop
