#include "platform/dao/query.h"

#include "platform/dao/fixture.h"

using namespace daotest;

namespace {

TEST(QueryTest, queriesOfTheProgram_areParsed)
{
    const dao::SelectQuery lines =
        dao::parseQuery(u"SELECT * FROM CUTS WHERE ORDER_NUM = 5 ORDER BY NUM ASC"_s);
    EXPECT_EQ(lines.table, u"CUTS"_s);
    ASSERT_TRUE(lines.where);
    EXPECT_EQ(lines.where->field, u"ORDER_NUM"_s);
    EXPECT_EQ(lines.where->value, 5);
    EXPECT_EQ(lines.orderBy, u"NUM"_s);
    const dao::SelectQuery orders = dao::parseQuery(u"SELECT * FROM Orders Order by Number"_s);
    EXPECT_EQ(orders.table, u"Orders"_s);
    EXPECT_FALSE(orders.where);
    EXPECT_EQ(orders.orderBy, u"Number"_s);
    EXPECT_EQ(dao::parseQuery(u" select*from\tx "_s).table, u"x"_s);
}

TEST(QueryTest, numbersInAnyForm_areParsed)
{
    struct Case
    {
        QString text;
        double value;
    };
    const Case cases[] = {
        {u"5"_s, 5},           {u"-5"_s, -5},   {u"0"_s, 0},
        {u"-32768"_s, -32768}, {u"2.5"_s, 2.5}, {u"-0.125"_s, -0.125},
        {u".5"_s, 0.5},        {u"7."_s, 7},    {u"99999999999999999999"_s, 1e20},
    };
    for (const Case& each : cases) {
        for (const QString& sign : {u"="_s, u" = "_s}) {
            const auto query = dao::parseQuery(u"SELECT * FROM T WHERE F"_s + sign + each.text);
            EXPECT_EQ(query.where->value.toDouble(), each.value) << qPrintable(each.text);
        }
    }
}

TEST(QueryTest, otherTexts_areRefused)
{
    const QStringList texts{
        u""_s,
        u"SELECT"_s,
        u"SELECT *"_s,
        u"SELECT * FROM"_s,
        u"SELECT Name FROM T"_s,
        u"SELECT * FROM T,U"_s,
        u"SELECT * FROM 5"_s,
        u"SELECT * FROM WHERE"_s,
        u"SELECT * FROM T;"_s,
        u"SELECT * FROM T WHERE"_s,
        u"SELECT * FROM T WHERE F"_s,
        u"SELECT * FROM T WHERE F ="_s,
        u"SELECT * FROM T WHERE F = x"_s,
        u"SELECT * FROM T WHERE F = '5'"_s,
        u"SELECT * FROM T WHERE F = 5x"_s,
        u"SELECT * FROM T WHERE F = 5.5.5"_s,
        u"SELECT * FROM T WHERE F = --5"_s,
        u"SELECT * FROM T WHERE F = - 5"_s,
        u"SELECT * FROM T WHERE F = ."_s,
        u"SELECT * FROM T WHERE F = "_s + QString(400, u'9'),
        u"SELECT * FROM T WHERE F > 5"_s,
        u"SELECT * FROM T WHERE F = 5 AND G = 6"_s,
        u"SELECT * FROM T WHERE F = 5 OR 1 = 1"_s,
        u"SELECT * FROM T ORDER F"_s,
        u"SELECT * FROM T ORDER BY"_s,
        u"SELECT * FROM T ORDER BY F DESC"_s,
        u"SELECT * FROM T ORDER BY F, G"_s,
        u"SELECT * FROM T ORDER BY F ASC ASC"_s,
        u"SELECT * FROM T ORDER BY F WHERE G = 1"_s,
        u"SELECT * FROM T WHERE F = 5 ORDER BY F ASC; DROP TABLE T"_s,
        u"DELETE FROM T"_s,
    };
    for (const QString& text : texts)
        EXPECT_EQ(errorOf([&] { dao::parseQuery(text); }), 3131) << qPrintable(text);
}

class SourceTest : public ItemsTest
{
};

TEST_F(SourceTest, invalidSource_throwsTheMatchingError)
{
    const auto database = open();
    const auto error = [&](const QString& source, dao::RecordsetType type) {
        return errorOf([&] { database->OpenRecordset(source, type); });
    };
    EXPECT_EQ(error(u"Nothing"_s, dao::dbOpenTable), 3078);
    EXPECT_EQ(error(u"Nothing"_s, dao::dbOpenDynaset), 3078);
    EXPECT_EQ(error(u""_s, dao::dbOpenTable), 3078);
    EXPECT_EQ(error(u"SELECT * FROM Nothing"_s, dao::dbOpenDynaset), 3078);
    EXPECT_EQ(error(u"SELECT * FROM Items WHERE Nun = 1"_s, dao::dbOpenDynaset), 3061);
    EXPECT_EQ(error(u"SELECT * FROM Items ORDER BY Nun"_s, dao::dbOpenDynaset), 3061);
    EXPECT_EQ(error(u"SELECT * FROM Items LIMIT 1"_s, dao::dbOpenDynaset), 3131);
    EXPECT_EQ(error(u"DELETE FROM Items"_s, dao::dbOpenDynaset), 3131);
    EXPECT_EQ(error(u"SELECT * FROM Items"_s, dao::dbOpenTable), 3251);
    sql(u"CREATE VIEW Seen AS SELECT * FROM Items"_s);
    EXPECT_EQ(error(u"Seen"_s, dao::dbOpenTable), 3251);
    EXPECT_EQ(error(u"SELECT * FROM Seen"_s, dao::dbOpenDynaset), 3251);
}

TEST_F(SourceTest, tableWithAnyName_canBeOpened)
{
    sql(u"CREATE TABLE \"odd \"\"name' %1?:x\" (\"a \"\"b\" LONG, \"select\" TEXT(5))"_s);
    const auto rows = table(u"odd \"name' %1?:x"_s);
    rows->AddNew();
    rows->Fields(u"A \"B"_s).SetValue(3);
    rows->Fields(u"select"_s).SetValue(u"x"_s);
    rows->Update();
    EXPECT_EQ(rows->Fields(0).Value(), 3);
    sql(u"CREATE TABLE הזמנות (מספר LONG)"_s);
    sql(u"INSERT INTO הזמנות VALUES (4)"_s);
    EXPECT_EQ(dynaset(u"SELECT * FROM הזמנות ORDER BY מספר"_s)->Fields(0).Value(), 4);
}

} // namespace
