#include "store/schema.h"

#include "platform/dao/database.h"
#include "platform/dao/engine/field_search.h"

using namespace Qt::StringLiterals;

namespace store {

namespace {

using dao::FieldInfo;
using dao::IndexInfo;

FieldInfo text(const QString& name, int size)
{
    return {.name = name, .type = dao::dbText, .size = size};
}

FieldInfo number(const QString& name)
{
    return {.name = name, .type = dao::dbLong};
}

FieldInfo decimal(const QString& name)
{
    return {.name = name, .type = dao::dbDouble};
}

FieldInfo date(const QString& name)
{
    return {.name = name, .type = dao::dbDate};
}

FieldInfo yesNo(const QString& name)
{
    return {.name = name, .type = dao::dbBoolean};
}

FieldInfo counter(const QString& name)
{
    return {.name = name, .type = dao::dbLong, .counter = true};
}

IndexInfo primaryKey(const QString& field)
{
    return {.name = u"PrimaryKey"_s, .fields = {field}, .primary = true, .unique = true};
}

IndexInfo index(const QString& field)
{
    return {.name = field, .fields = {field}};
}

TableSchema orders()
{
    return {.name = u"Orders"_s,
            .fields = {number(u"Number"_s), date(u"Order_Date"_s), yesNo(u"Open_Close"_s),
                       text(u"CustomerName"_s, 50), text(u"CustomerAddress"_s, 50),
                       text(u"CustomerTel"_s, 20)},
            .indexes = {primaryKey(u"Number"_s)}};
}

/// Returns the definition of the table Cuts. The order of its fields is a contract, because order
/// lines are written and read by ordinal (line_columns.h).
TableSchema cuts()
{
    TableSchema table;
    table.name = u"Cuts"_s;
    table.fields = {
        counter(u"Code"_s),          // 0
        text(u"Name"_s, 50),         // 1
        decimal(u"MyWidth"_s),       // 2
        decimal(u"MYHeight"_s),      // 3
        decimal(u"Mashkof_W"_s),     // 4
        decimal(u"Mashkof_H"_s),     // 5
        decimal(u"Kanaf_W"_s),       // 6
        decimal(u"Kanaf_H"_s),       // 7
        decimal(u"Glass_W"_s),       // 8
        decimal(u"Glass_H"_s),       // 9
        decimal(u"Reshet_W"_s),      // 10
        decimal(u"Reshet_H"_s),      // 11
        text(u"Mashof_Kind"_s, 50),  // 12
        text(u"Mahkof_Color"_s, 50), // 13
        number(u"Mahkof_Count"_s),   // 14
        text(u"Kanaf_Kind"_s, 50),   // 15
        text(u"Kanaf_Color"_s, 50),  // 16
        number(u"Kanaf_Count"_s),    // 17
        text(u"Glass_Kind"_s, 50),   // 18
        text(u"Glass_Color"_s, 50),  // 19
        number(u"Glass_Count"_s),    // 20
        text(u"Reshet_Kind"_s, 50),  // 21
        text(u"Reshet_Color"_s, 50), // 22
        number(u"Reshet_Count"_s),   // 23
        text(u"Kind"_s, 30),         // 24
        decimal(u"MyWidth_2"_s),     // 25
        decimal(u"MYHeight_2"_s),    // 26
        decimal(u"U_Thick"_s),       // 27
        decimal(u"U_Cut"_s),         // 28
        decimal(u"U_Vasa"_s),        // 29
        decimal(u"Shalav_Thick"_s),  // 30
        decimal(u"Shalav_Width"_s),  // 31
        number(u"Shalav_Count"_s),   // 32
        number(u"Order_Num"_s),      // 33
        text(u"Rem"_s, 50),          // 34
        decimal(u"Argaz_Width"_s),   // 35
        decimal(u"Argaz_Height"_s),  // 36
        date(u"Order_Date"_s),       // 37
        number(u"NUM"_s),            // 38
        text(u"Sign"_s, 10),         // 39
    };
    table.indexes = {primaryKey(u"Code"_s), index(u"Order_Num"_s)};
    return table;
}

TableSchema serials()
{
    TableSchema table;
    table.name = u"Serials"_s;
    table.fields = {counter(u"AutoNum"_s), text(u"Name"_s, 50)};
    for (const QString& deduction : deductionFields())
        table.fields.push_back(decimal(deduction));
    for (const FieldInfo& field :
         {number(u"Nativ_Num"_s), number(u"Kanaf_Num"_s), text(u"Rem"_s, 50), text(u"Sign"_s, 10)})
        table.fields.push_back(field);
    table.indexes = {primaryKey(u"AutoNum"_s)};
    return table;
}

TableSchema list(const QString& name)
{
    return {.name = name,
            .fields = {counter(u"Code"_s), text(u"Name"_s, 50)},
            .indexes = {primaryKey(u"Code"_s)}};
}

/// Returns the definition of the table of bar settings. The table has one row for each combination
/// of part, profile and colour that has settings of its own.
TableSchema bars()
{
    TableSchema table;
    table.name = u"zomrel_bars"_s;
    table.fields = {counter(u"Code"_s), text(u"Part"_s, 10), text(u"Profile"_s, 50),
                    text(u"Colour"_s, 50)};
    for (const QString& each :
         {u"Bar_Length"_s, u"Kerf"_s, u"Trim"_s, u"Angle"_s, u"Offcut"_s, u"Width_Factor"_s,
          u"Height_Factor"_s, u"Door_Width_Factor"_s, u"Door_Height_Factor"_s})
        table.fields.push_back(decimal(each));
    table.indexes = {
        primaryKey(u"Code"_s),
        {.name = u"Bars_Key"_s, .fields = {u"Part"_s, u"Profile"_s, u"Colour"_s}, .unique = true}};
    return table;
}

std::vector<TableSchema> allTables()
{
    std::vector<TableSchema> tables{orders(), cuts(), serials()};
    for (const PartLists& part : partLists()) {
        tables.push_back(list(part.kindTable));
        tables.push_back(list(part.colorTable));
    }
    return tables;
}

} // namespace

int TableSchema::ordinalOf(const QString& field) const
{
    return dao::ordinalOf(fields, field);
}

const std::vector<TableSchema>& schema()
{
    static const std::vector<TableSchema> tables = allTables();
    return tables;
}

const std::vector<TableSchema>& ownTables()
{
    static const std::vector<TableSchema> tables{bars()};
    return tables;
}

std::vector<TableSchema> wholeSchema()
{
    std::vector<TableSchema> all = schema();
    all.insert(all.end(), ownTables().begin(), ownTables().end());
    return all;
}

void createTable(dao::Database& database, const TableSchema& table)
{
    dao::TableDef created = database.CreateTableDef(table.name);
    for (const dao::FieldInfo& field : table.fields)
        created.Fields().Append(dao::FieldDef(field));
    for (const dao::IndexInfo& index : table.indexes)
        created.indexes().Append(dao::Index(index));
    database.tableDefs().Append(created);
}

const TableSchema* tableSchema(const QString& name)
{
    for (const TableSchema& table : schema()) {
        if (table.name.compare(name, Qt::CaseInsensitive) == 0)
            return &table;
    }
    return nullptr;
}

const std::vector<PartLists>& partLists()
{
    static const std::vector<PartLists> lists{{u"MashkofKind"_s, u"MashkofColor"_s},
                                              {u"KanafKind"_s, u"KanafColor"_s},
                                              {u"GlassKind"_s, u"GlassColor"_s},
                                              {u"ReshetKind"_s, u"ReshetColor"_s}};
    return lists;
}

const QStringList& deductionFields()
{
    static const QStringList fields{u"Mashkof_W"_s, u"Mashkof_H"_s, u"Kanaf_W"_s,  u"Kanaf_H"_s,
                                    u"Glass_W"_s,   u"Glass_H"_s,   u"Reshet_W"_s, u"Reshet_H"_s};
    return fields;
}

} // namespace store
