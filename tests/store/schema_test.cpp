#include "store/schema.h"
#include "support/printers.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>

using namespace Qt::StringLiterals;

namespace {

enum class Kind { Counter, Text, Whole, Decimal, Date, YesNo };

struct Expected
{
    const char16_t* name;
    Kind kind;
    int size = 0;
};

dao::DataType typeOf(Kind kind)
{
    switch (kind) {
    case Kind::Counter:
    case Kind::Whole:
        return dao::dbLong;
    case Kind::Text:
        return dao::dbText;
    case Kind::Decimal:
        return dao::dbDouble;
    case Kind::Date:
        return dao::dbDate;
    case Kind::YesNo:
        return dao::dbBoolean;
    }
    return dao::dbText;
}

template <std::size_t N>
void expectFields(const QString& table, const std::array<Expected, N>& expected)
{
    const store::TableSchema* found = store::tableSchema(table);
    ASSERT_NE(found, nullptr) << table.toStdString();
    ASSERT_EQ(found->fields.size(), N);
    for (std::size_t ordinal = 0; ordinal < N; ++ordinal) {
        const dao::FieldInfo& field = found->fields[ordinal];
        const std::string place = table.toStdString() + " ordinal " + std::to_string(ordinal);
        EXPECT_EQ(field.name, QString::fromUtf16(expected[ordinal].name)) << place;
        EXPECT_EQ(field.type, typeOf(expected[ordinal].kind)) << place;
        EXPECT_EQ(field.size, expected[ordinal].size) << place;
        EXPECT_EQ(field.counter, expected[ordinal].kind == Kind::Counter) << place;
    }
}

} // namespace

TEST(SchemaTest, HasTheElevenTables)
{
    QStringList names;
    for (const store::TableSchema& table : store::schema())
        names.append(table.name);
    names.sort();
    EXPECT_EQ(names, (QStringList{u"Cuts"_s, u"GlassColor"_s, u"GlassKind"_s, u"KanafColor"_s,
                                  u"KanafKind"_s, u"MashkofColor"_s, u"MashkofKind"_s, u"Orders"_s,
                                  u"ReshetColor"_s, u"ReshetKind"_s, u"Serials"_s}));
}

TEST(SchemaTest, CutsFieldsHaveTheirOrdinals)
{
    expectFields(u"Cuts"_s, std::array<Expected, 40>{{
                                {u"Code", Kind::Counter},
                                {u"Name", Kind::Text, 50},
                                {u"MyWidth", Kind::Decimal},
                                {u"MYHeight", Kind::Decimal},
                                {u"Mashkof_W", Kind::Decimal},
                                {u"Mashkof_H", Kind::Decimal},
                                {u"Kanaf_W", Kind::Decimal},
                                {u"Kanaf_H", Kind::Decimal},
                                {u"Glass_W", Kind::Decimal},
                                {u"Glass_H", Kind::Decimal},
                                {u"Reshet_W", Kind::Decimal},
                                {u"Reshet_H", Kind::Decimal},
                                {u"Mashof_Kind", Kind::Text, 50},
                                {u"Mahkof_Color", Kind::Text, 50},
                                {u"Mahkof_Count", Kind::Whole},
                                {u"Kanaf_Kind", Kind::Text, 50},
                                {u"Kanaf_Color", Kind::Text, 50},
                                {u"Kanaf_Count", Kind::Whole},
                                {u"Glass_Kind", Kind::Text, 50},
                                {u"Glass_Color", Kind::Text, 50},
                                {u"Glass_Count", Kind::Whole},
                                {u"Reshet_Kind", Kind::Text, 50},
                                {u"Reshet_Color", Kind::Text, 50},
                                {u"Reshet_Count", Kind::Whole},
                                {u"Kind", Kind::Text, 30},
                                {u"MyWidth_2", Kind::Decimal},
                                {u"MYHeight_2", Kind::Decimal},
                                {u"U_Thick", Kind::Decimal},
                                {u"U_Cut", Kind::Decimal},
                                {u"U_Vasa", Kind::Decimal},
                                {u"Shalav_Thick", Kind::Decimal},
                                {u"Shalav_Width", Kind::Decimal},
                                {u"Shalav_Count", Kind::Whole},
                                {u"Order_Num", Kind::Whole},
                                {u"Rem", Kind::Text, 50},
                                {u"Argaz_Width", Kind::Decimal},
                                {u"Argaz_Height", Kind::Decimal},
                                {u"Order_Date", Kind::Date},
                                {u"NUM", Kind::Whole},
                                {u"Sign", Kind::Text, 10},
                            }});
}

TEST(SchemaTest, OrdersHasItsSixFields)
{
    expectFields(u"Orders"_s, std::array<Expected, 6>{{{u"Number", Kind::Whole},
                                                       {u"Order_Date", Kind::Date},
                                                       {u"Open_Close", Kind::YesNo},
                                                       {u"CustomerName", Kind::Text, 50},
                                                       {u"CustomerAddress", Kind::Text, 50},
                                                       {u"CustomerTel", Kind::Text, 20}}});
}

TEST(SchemaTest, SerialsHasItsFields)
{
    expectFields(u"Serials"_s, std::array<Expected, 14>{{{u"AutoNum", Kind::Counter},
                                                         {u"Name", Kind::Text, 50},
                                                         {u"Mashkof_W", Kind::Decimal},
                                                         {u"Mashkof_H", Kind::Decimal},
                                                         {u"Kanaf_W", Kind::Decimal},
                                                         {u"Kanaf_H", Kind::Decimal},
                                                         {u"Glass_W", Kind::Decimal},
                                                         {u"Glass_H", Kind::Decimal},
                                                         {u"Reshet_W", Kind::Decimal},
                                                         {u"Reshet_H", Kind::Decimal},
                                                         {u"Nativ_Num", Kind::Whole},
                                                         {u"Kanaf_Num", Kind::Whole},
                                                         {u"Rem", Kind::Text, 50},
                                                         {u"Sign", Kind::Text, 10}}});
}

TEST(SchemaTest, TheEightListsHaveTheSameFields)
{
    ASSERT_EQ(store::partLists().size(), 4U);
    for (const store::PartLists& part : store::partLists()) {
        for (const QString& name : {part.kindTable, part.colorTable})
            expectFields(name, std::array<Expected, 2>{
                                   {{u"Code", Kind::Counter}, {u"Name", Kind::Text, 50}}});
    }
}

TEST(SchemaTest, FirstIndexIsThePrimaryKey)
{
    for (const store::TableSchema& table : store::schema()) {
        ASSERT_FALSE(table.indexes.empty()) << table.name.toStdString();
        const dao::IndexInfo& first = table.indexes.front();
        EXPECT_TRUE(first.primary) << table.name.toStdString();
        EXPECT_EQ(first.fields, QStringList{table.fields.front().name});
    }
    EXPECT_EQ(store::tableSchema(u"Orders"_s)->indexes.size(), 1U);
    EXPECT_EQ(store::tableSchema(u"Serials"_s)->indexes.size(), 1U);
}

TEST(SchemaTest, SecondIndexOfCutsIsOnTheOrderNumber)
{
    const store::TableSchema* cuts = store::tableSchema(u"Cuts"_s);
    ASSERT_EQ(cuts->indexes.size(), 2U);
    EXPECT_EQ(cuts->indexes[1].fields, QStringList{u"Order_Num"_s});
    EXPECT_FALSE(cuts->indexes[1].primary);
    EXPECT_FALSE(cuts->indexes[1].unique);
}

TEST(SchemaTest, NamesMatchInAnyCase)
{
    const store::TableSchema* cuts = store::tableSchema(u"CUTS"_s);
    ASSERT_NE(cuts, nullptr);
    EXPECT_EQ(cuts->ordinalOf(u"u_vasa"_s), 29);
    EXPECT_EQ(cuts->ordinalOf(u"Num"_s), 38);
    EXPECT_EQ(cuts->ordinalOf(u"NoSuchField"_s), -1);
    EXPECT_EQ(store::tableSchema(u"Aliens"_s), nullptr);
}
