#include "platform/dao/fixture.h"

using namespace daotest;

namespace {

class DefinitionsTest : public DaoTest
{
protected:
    std::shared_ptr<dao::Database> create()
    {
        // On a server, the program does not create databases.
        return isOnServer() ? open()
                            : dao::DBEngine::instance().Workspaces(0).CreateDatabase(path_);
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

TEST_F(DefinitionsTest, createdStore_isEmptyAndOpensAgain)
{
    create();
    EXPECT_EQ(open()->tableDefs().Count(), 0);
    EXPECT_EQ(errorOf([&] { dao::DBEngine::instance().Workspaces(0).CreateDatabase(path_); }),
              3204);
}

TEST_F(DefinitionsTest, appendedTable_hasItsFieldsAndIndexes)
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

TEST_F(DefinitionsTest, counterAfterADeletion_givesANewNumber)
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

TEST_F(DefinitionsTest, lastFieldDeleted_definitionRemains)
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

TEST_F(DefinitionsTest, tablesAndViews_areListedInTheOrderOfCreation)
{
    sql(u"CREATE TABLE Zebra (A LONG)"_s);
    sql(u"CREATE TABLE Apple (A INTEGER PRIMARY KEY AUTOINCREMENT)"_s);
    sql(u"CREATE VIEW Middle AS SELECT * FROM Zebra"_s);
    const auto database = open();
    ASSERT_EQ(database->tableDefs().Count(), 3);
    EXPECT_EQ(database->tableDefs()(0).Name(), u"Zebra"_s);
    EXPECT_EQ(database->tableDefs()(1).Name(), u"Apple"_s);
    EXPECT_EQ(database->tableDefs()(2).Name(), u"Middle"_s);
    EXPECT_TRUE(database->tableDefs()(1).Updatable());
    EXPECT_FALSE(database->tableDefs()(2).Updatable());
    EXPECT_EQ(database->tableDefs()(u"ZEBRA"_s).Name(), u"Zebra"_s);
    EXPECT_EQ(errorOf([&] { database->tableDefs()(3); }), 3265);
    EXPECT_EQ(errorOf([&] { database->tableDefs()(-1); }), 3265);
    EXPECT_EQ(errorOf([&] { database->tableDefs()(u"Zebr_"_s); }), 3265);
}

TEST_F(DefinitionsTest, indexes_beginWithThePrimaryKey)
{
    sql(u"CREATE TABLE T (A LONG, B LONG, C LONG, PRIMARY KEY (C))"_s);
    sql(u"CREATE INDEX ZFirst ON T (B)"_s);
    sql(u"CREATE UNIQUE INDEX ASecond ON T (A, B)"_s);
    const auto database = open();
    const dao::Indexes indexes = database->tableDefs()(u"T"_s).indexes();
    ASSERT_EQ(indexes.Count(), 3);
    EXPECT_TRUE(indexes(0).Primary());
    EXPECT_EQ(indexes(0).Fields(), QStringList(u"C"_s));
    EXPECT_EQ(indexes(1).Name(), u"ZFirst"_s);
    EXPECT_FALSE(indexes(1).info().unique);
    EXPECT_EQ(indexes(2).Name(), u"ASecond"_s);
    EXPECT_TRUE(indexes(2).info().unique);
    EXPECT_EQ(indexes(u"zfirst"_s).Fields(), QStringList(u"B"_s));
    EXPECT_EQ(errorOf([&] { indexes(3); }), 3265);
    EXPECT_EQ(errorOf([&] { indexes(u"B"_s); }), 3265);
}

TEST_F(DefinitionsTest, indexesWithoutAPrimaryKey_areInTheOrderOfCreation)
{
    sql(u"CREATE TABLE T (A LONG, B LONG)"_s);
    EXPECT_EQ(open()->tableDefs()(u"T"_s).indexes().Count(), 0);
    const auto database = open();
    EXPECT_EQ(errorOf([&] { database->tableDefs()(u"T"_s).indexes()(0); }), 3265);
    sql(u"CREATE INDEX Z ON T (B)"_s);
    sql(u"CREATE INDEX A ON T (A)"_s);
    const auto fresh = open();
    EXPECT_EQ(fresh->tableDefs()(u"T"_s).indexes()(0).Name(), u"Z"_s);
}

TEST_F(DefinitionsTest, sameIndexNameInTwoTables_isAccepted)
{
    const auto database = create();
    for (const QString& name : {u"One"_s, u"Two"_s}) {
        dao::TableDef table = database->CreateTableDef(name);
        table.Fields().Append(table.CreateField(u"A"_s, dao::dbLong));
        table.indexes().Append(dao::Index({u"Same"_s, {u"A"_s}, false, false}));
        database->tableDefs().Append(table);
        table.indexes().Append(dao::Index({u"Later"_s, {u"A"_s}, false, true}));
    }
    const auto again = open();
    for (const QString& name : {u"One"_s, u"Two"_s}) {
        const dao::Indexes indexes = again->tableDefs()(name).indexes();
        ASSERT_EQ(indexes.Count(), 2);
        EXPECT_EQ(indexes(0).Name(), u"Same"_s);
        EXPECT_EQ(indexes(1).Name(), u"Later"_s);
    }
    const auto rows = table(u"Two"_s);
    rows->SetIndex(u"Same"_s);
    EXPECT_EQ(rows->Index(), u"Same"_s);
}

TEST_F(DefinitionsTest, fieldAddedToATableWithRows_isNullOrFalseInThem)
{
    sql(u"CREATE TABLE Orders (Number LONG PRIMARY KEY)"_s);
    sql(u"INSERT INTO Orders VALUES (1), (2)"_s);
    const auto database = open();
    const dao::TableDef orders = database->tableDefs()(u"Orders"_s);
    orders.Fields().Append(orders.CreateField(u"CustomerTel"_s, dao::dbText, 20));
    orders.Fields().Append(orders.CreateField(u"Open_Close"_s, dao::dbBoolean));
    orders.Fields().Append(orders.CreateField(u"Order_Date"_s, dao::dbDate));
    EXPECT_EQ(
        errorOf([&] { orders.Fields().Append(orders.CreateField(u"CUSTOMERTEL"_s, dao::dbLong)); }),
        3191);
    const auto rows = table(u"Orders"_s);
    EXPECT_EQ(rows->FieldCount(), 4);
    EXPECT_EQ(rows->Fields(u"CustomerTel"_s).Size(), 20);
    EXPECT_FALSE(rows->Fields(u"CustomerTel"_s).Value().isValid());
    EXPECT_EQ(rows->Fields(u"Open_Close"_s).Value(), 0);
    EXPECT_EQ(rows->Fields(u"Order_Date"_s).Type(), dao::dbDate);
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Orders WHERE Open_Close = 0"_s), 2);
}

TEST_F(DefinitionsTest, fieldAddedByAnotherStation_cannotBeAddedAgain)
{
    sql(u"CREATE TABLE Orders (Number LONG)"_s);
    const auto database = open();
    const dao::TableDef orders = database->tableDefs()(u"Orders"_s);
    EXPECT_EQ(orders.Fields().Count(), 1);
    sql(u"ALTER TABLE Orders ADD COLUMN Tel TEXT(20)"_s);
    EXPECT_EQ(
        errorOf([&] { orders.Fields().Append(orders.CreateField(u"Tel"_s, dao::dbText, 20)); }),
        3191);
}

TEST_F(DefinitionsTest, deletedField_isGoneFromTheTable)
{
    sql(u"CREATE TABLE T (A LONG, B TEXT(5), C LONG)"_s);
    sql(u"INSERT INTO T VALUES (1, 'x', 3)"_s);
    const auto database = open();
    const dao::TableDef def = database->tableDefs()(u"T"_s);
    EXPECT_EQ(errorOf([&] { def.Fields().Delete(u"D"_s); }), 3265);
    def.Fields().Delete(u"b"_s);
    EXPECT_EQ(def.Fields().Count(), 2);
    const auto rows = table(u"T"_s);
    EXPECT_EQ(rows->FieldCount(), 2);
    EXPECT_EQ(rows->Fields(u"C"_s).Value(), 3);
}

TEST_F(DefinitionsTest, tableAppendedTwiceOrWithoutAField_isRefused)
{
    const auto database = create();
    const dao::TableDef empty = database->CreateTableDef(u"Empty"_s);
    EXPECT_EQ(errorOf([&] { database->tableDefs().Append(empty); }), 3264);
    appendPeople(*database);
    EXPECT_EQ(errorOf([&] { appendPeople(*database); }), 3010);
    EXPECT_EQ(database->tableDefs().Count(), 1);
}

TEST_F(DefinitionsTest, tableThatFailsToBeCreated_leavesNothing)
{
    const auto database = create();
    dao::TableDef table = database->CreateTableDef(u"Half"_s);
    table.Fields().Append(table.CreateField(u"A"_s, dao::dbLong));
    table.indexes().Append(dao::Index({u"Wrong"_s, {u"B"_s}, false, false}));
    EXPECT_EQ(errorOf([&] { database->tableDefs().Append(table); }), 3265);
    dao::TableDef twice = database->CreateTableDef(u"Twice"_s);
    twice.Fields().Append(twice.CreateField(u"A"_s, dao::dbLong));
    for (int i = 0; i < 2; ++i)
        twice.indexes().Append(dao::Index({u"Same"_s, {u"A"_s}, false, false}));
    EXPECT_NE(errorOf([&] { database->tableDefs().Append(twice); }), 0);
    EXPECT_EQ(open()->tableDefs().Count(), 0);
    EXPECT_EQ(errorOf([&] { appendPeople(*database); }), 0) << "no statement is left open";
}

TEST_F(DefinitionsTest, tableWithoutFields_isStillListed)
{
    const auto database = create();
    appendPeople(*database);
    dao::TableDef orders = database->CreateTableDef(u"Orders"_s);
    orders.Fields().Append(orders.CreateField(u"SAMPLE"_s, dao::dbText));
    database->tableDefs().Append(orders);
    orders.Fields().Delete(u"SAMPLE"_s);
    ASSERT_EQ(database->tableDefs().Count(), 2);
    EXPECT_EQ(database->tableDefs()(1).Name(), u"Orders"_s);
    EXPECT_EQ(database->tableDefs()(1).indexes().Count(), 0);
    EXPECT_EQ(open()->tableDefs().Count(), 1) << "it exists only in this definition";
}

TEST_F(DefinitionsTest, assignedCounter_isContinuedFrom)
{
    appendPeople(*create());
    const auto rows = table(u"People"_s);
    rows->AddNew();
    rows->Fields(u"Code"_s).SetValue(40);
    rows->Update();
    rows->Delete();
    rows->AddNew();
    rows->Update();
    rows->MoveLast();
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 41);
}

TEST_F(DefinitionsTest, rowsInsertedByPlainSql_areNumbered)
{
    appendPeople(*create());
    sql(u"INSERT INTO People (Name) VALUES ('a'), ('b')"_s);
    EXPECT_EQ(scalar(u"SELECT group_concat(Code) FROM People"_s), u"1,2"_s);
    sql(u"DELETE FROM People"_s);
    raw_.reset();
    const auto rows = table(u"People"_s);
    rows->AddNew();
    rows->Update();
    rows->MoveLast();
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 3);
}

TEST_F(DefinitionsTest, countersOfTwoTables_areIndependent)
{
    const auto database = create();
    for (const QString& name : {u"It's"_s, u"Two"_s}) {
        dao::TableDef def = database->CreateTableDef(name);
        def.Fields().Append(def.CreateCounter(u"Code \"x\""_s));
        database->tableDefs().Append(def);
    }
    for (const QString& name : {u"It's"_s, u"It's"_s, u"Two"_s}) {
        const auto rows = table(name);
        rows->AddNew();
        rows->Update();
    }
    EXPECT_EQ(table(u"Two"_s)->Fields(0).Value(), 1);
    const auto rows = table(u"It's"_s);
    rows->MoveLast();
    EXPECT_EQ(rows->Fields(0).Value(), 2);
}

} // namespace
