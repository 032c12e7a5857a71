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

bool isSame(const QString& one, const QString& other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

/// Returns true if the definition of a field in the store is the expected one. A definition that
/// forbids Null is accepted only for a counter field (automatic number).
bool isAlike(const dao::FieldInfo& found, const dao::FieldInfo& wanted)
{
    return isSame(found.name, wanted.name) && found.type == wanted.type &&
           found.size == wanted.size && found.counter == wanted.counter &&
           (!found.required || wanted.counter);
}

bool isAlike(const dao::IndexInfo& found, const dao::IndexInfo& wanted)
{
    return isSame(found.fields.join(u'\n'), wanted.fields.join(u'\n')) &&
           found.primary == wanted.primary && found.unique == wanted.unique;
}

/// Throws UnrecognizedFormat (3343) unless the fields or indexes of the table in the store have the
/// expected definitions.
template <typename Info>
void requireAlike(const std::vector<Info>& found, const std::vector<Info>& wanted,
                  const QString& what)
{
    const auto refuse = [&](const QString& name) {
        throw RunTimeError(runtime::UnrecognizedFormat,
                           u"The table %1 does not have the expected structure: %2 %3."_s.arg(
                               barSchema().name, what, name));
    };
    for (const Info& each : wanted) {
        if (std::ranges::none_of(found, [&](const Info& other) { return isAlike(other, each); }))
            refuse(each.name);
    }
    for (const Info& each : found) {
        if (std::ranges::none_of(wanted, [&](const Info& other) { return isAlike(each, other); }))
            refuse(each.name);
    }
}

void requireShape(dao::Database& database)
{
    const store::TableSchema& schema = barSchema();
    dao::TableDef table = database.tableDefs()(schema.name);
    const dao::FieldDefs fields = table.Fields();
    std::vector<dao::FieldInfo> found;
    found.reserve(static_cast<std::size_t>(fields.Count()));
    for (int i = 0; i < fields.Count(); ++i)
        found.push_back(fields(i).info());
    requireAlike(found, schema.fields, u"field"_s);
    const dao::Indexes indexes = table.indexes();
    std::vector<dao::IndexInfo> foundIndexes;
    foundIndexes.reserve(static_cast<std::size_t>(indexes.Count()));
    for (int i = 0; i < indexes.Count(); ++i)
        foundIndexes.push_back(indexes(i).info());
    requireAlike(foundIndexes, schema.indexes, u"index"_s);
}

/// Returns the group of pieces to which a row of the table zomrel_bars belongs, or no value if the
/// part in the row is unknown or is not cut from bars.
std::optional<GroupKey> groupIn(dao::Recordset& row)
{
    const std::optional<Part> part = partNamed(row.Fields(u"Part"_s).Value().toString());
    if (!part || *part == Part::Glass)
        return {};
    return GroupKey{*part, row.Fields(u"Profile"_s).Value().toString(),
                    row.Fields(u"Colour"_s).Value().toString()};
}

/// Reads the settings from a row of the settings table. Returns the name of the first field with an
/// invalid value, or an empty text if all values are valid.
QString readSettings(dao::Recordset& row, BarSettings& settings)
{
    for (const SettingColumn& column : settingColumns()) {
        const QVariant value = row.Fields(column.field).Value();
        if (!value.isValid() || !isAllowed(column, value.toDouble()))
            return column.field;
        column.set(settings, value.toDouble());
    }
    return invalidField(settings);
}

QString codeOf(dao::Recordset& row)
{
    return row.Fields(u"Code"_s).Value().toString();
}

[[noreturn]] void refuseRow(dao::Recordset& row, const QString& field)
{
    throw RunTimeError(runtime::DataTypeConversion,
                       u"The table %1 contains an invalid value in field %2 of row %3."_s.arg(
                           barSchema().name, field, codeOf(row)));
}

void requireValid(const SettingsByGroup& settings)
{
    for (const auto& [group, each] : settings) {
        const QString field = invalidField(each);
        if (!field.isEmpty())
            throw RunTimeError(
                runtime::DataTypeConversion,
                u"The settings of %1 '%2' '%3' have an invalid value in field %4."_s.arg(
                    partName(group.part), group.profile, group.colour, field));
    }
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
        const std::optional<GroupKey> group = groupIn(*rows);
        if (!group) { // No reader accepts the table as long as it contains such a row.
            rows->Delete();
            continue;
        }
        const auto changed = settings.find(*group);
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
    for (; !rows->isEof(); rows->MoveNext()) {
        const std::optional<GroupKey> group = groupIn(*rows);
        if (!group)
            refuseRow(*rows, u"Part"_s);
        const QString invalid = readSettings(*rows, settings[*group]);
        if (!invalid.isEmpty())
            refuseRow(*rows, invalid);
    }
    return settings;
}

QStringList barTableFindings(dao::Database& database)
{
    QStringList findings;
    const auto rows = database.OpenRecordset(barSchema().name, dao::dbOpenDynaset);
    for (; !rows->isEof(); rows->MoveNext()) {
        BarSettings settings;
        const QString invalid = groupIn(*rows) ? readSettings(*rows, settings) : u"Part"_s;
        if (!invalid.isEmpty())
            findings.append(u"%1, Code %2: %3 has no valid value"_s.arg(barSchema().name,
                                                                        codeOf(*rows), invalid));
    }
    return findings;
}

void writeBarTable(const QString& path, const SettingsByGroup& settings)
{
    requireValid(settings);
    // If the function throws, the destructor of `database` closes the connection and so rolls the
    // transaction back.
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
