#include "platform/dao/fixture.h"

using namespace daotest;

namespace {

class DefinitionsTest : public DaoTest
{
protected:
    std::shared_ptr<dao::Database> create()
    {
        return dao::DBEngine::instance().Workspaces(0).CreateDatabase(path_);
    }

    static void appendPeople(dao::Database& database)
    {
        dao::TableDef people = database.CreateTableDef(u"People"_s);
        people.Fields().Append(people.CreateCounter(u"Code"_s));
        people.Fields().Append(people.CreateField(u"Name"_s, dao::dbText, 20));
        people.Fields().Append(people.CreateField(u"Age"_s, dao::dbInteger));
        people.Fields().Append(people.CreateField(u"Alive"_s, dao::dbBoolean));
        people.indexes().Append(dao::Index({u"ByName"_s, {u"Name"_s}, false, false}));
        people.indexes().Append(dao::Index({u"Key"_s, {u"Code"_s}, true, true}));
        people.indexes().Append(dao::Index({u"ByAge"_s, {u"Age"_s, u"Name"_s}, false, false}));
        database.tableDefs().Append(people);
    }
};

TEST_F(DefinitionsTest, MakesAnEmptyStoreThatOpensAgain)
{
    create();
    EXPECT_EQ(open()->tableDefs().Count(), 0);
    EXPECT_EQ(errorOf([&] { create(); }), 3204);
}

TEST_F(DefinitionsTest, CreatesATableWithItsFieldsAndIndexes)
{
    appendPeople(*create());
    const auto database = open();
    ASSERT_EQ(database->tableDefs().Count(), 1);
    const dao::TableDef people = database->tableDefs()(0);
    EXPECT_EQ(people.Name(), u"People"_s);
    EXPECT_TRUE(people.Updatable());
    ASSERT_EQ(people.Fields().Count(), 4);
    EXPECT_EQ(people.Fields()(0).Name(), u"Code"_s);
    EXPECT_TRUE(people.Fields()(0).info().counter);
    EXPECT_EQ(people.Fields()(u"NAME"_s).Size(), 20);
    EXPECT_EQ(people.Fields()(2).Type(), dao::dbInteger);
    EXPECT_EQ(people.Fields()(3).Type(), dao::dbBoolean);
    ASSERT_EQ(people.indexes().Count(), 3);
    EXPECT_TRUE(people.indexes()(0).Primary());
    EXPECT_EQ(people.indexes()(0).Fields(), QStringList(u"Code"_s));
    EXPECT_EQ(people.indexes()(1).Name(), u"ByName"_s);
    EXPECT_EQ(people.indexes()(2).Name(), u"ByAge"_s);
    EXPECT_EQ(people.indexes()(2).Fields(), (QStringList{u"Age"_s, u"Name"_s}));
}

TEST_F(DefinitionsTest, GivesCountersThatAreNeverGivenTwice)
{
    appendPeople(*create());
    const auto add = [&] {
        const auto rows = table(u"People"_s);
        rows->AddNew();
        rows->Fields(u"Name"_s).SetValue(u"x"_s);
        rows->Update();
        rows->MoveLast();
        return rows->Fields(u"Code"_s).Value().toInt();
    };
    EXPECT_EQ(add(), 1);
    EXPECT_EQ(add(), 2);
    EXPECT_EQ(add(), 3);
    sql(u"DELETE FROM People WHERE Code = 3"_s);
    EXPECT_EQ(add(), 4);
    sql(u"DELETE FROM People"_s);
    EXPECT_EQ(add(), 5);
}

TEST_F(DefinitionsTest, KeepsADefinitionWhoseLastFieldIsDeleted)
{
    const auto database = create();
    dao::TableDef orders = database->CreateTableDef(u"Orders"_s);
    orders.Fields().Append(orders.CreateField(u"SAMPLE"_s, dao::dbText));
    database->tableDefs().Append(orders);
    EXPECT_EQ(orders.Fields()(0).Size(), 255);
    orders.Fields().Delete(u"SAMPLE"_s);
    const dao::TableDef again = database->tableDefs()(u"Orders"_s);
    EXPECT_EQ(again.Fields().Count(), 0);
    again.Fields().Append(again.CreateField(u"Number"_s, dao::dbLong));
    again.Fields().Append(again.CreateField(u"Open_Close"_s, dao::dbBoolean));
    EXPECT_EQ(orders.Fields().Count(), 2);
    EXPECT_EQ(open()->tableDefs()(u"Orders"_s).Fields().Count(), 2);
}

} // namespace
