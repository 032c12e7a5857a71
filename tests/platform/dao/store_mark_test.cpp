#include "platform/dao/fixture.h"

#include "platform/dao/connection.h"
#include "platform/dao/table_copy.h"

using namespace daotest;

namespace {

/// A store with a mark, which another process changes while this process works with the store.
class StoreMarkTest : public ItemsTest
{
protected:
    void SetUp() override
    {
        ItemsTest::SetUp();
        add(1, 10, u"first"_s);
        const auto database = open();
        database->BeginTrans();
        dao::makeStoreMark(*database);
        database->CommitTrans();
    }

    QVariantList mark() { return sql(u"SELECT identity, generation FROM zomrel_store"_s).value(0); }
    QList<QVariantList> items() { return sql(u"SELECT Code, Num, Name FROM Items"_s); }

    /// Changes the generation, as a restore does.
    void restoreByAnother() { sql(u"UPDATE zomrel_store SET generation = 'another'"_s); }

    void expectRefused(const std::function<void()>& write)
    {
        const QList<QVariantList> before = items();
        EXPECT_EQ(errorOf(write), dao::storeReplaced);
        EXPECT_EQ(items(), before);
    }
};

/// A store that an older version made: it has no mark.
class OlderStoreTest : public ItemsTest
{
protected:
    void SetUp() override
    {
        ItemsTest::SetUp();
        add(1, 10, u"first"_s);
        // By this function a role knows its own store on a server.
        if (isOnServer())
            raw_->exactly(u"CREATE FUNCTION zomrel_count() RETURNS trigger LANGUAGE plpgsql AS "
                          "'BEGIN RETURN NULL; END'"_s);
    }

    void markByAnother(const QString& identity, const QString& generation)
    {
        sql(u"CREATE TABLE zomrel_store (identity TEXT(36), generation TEXT(36))"_s);
        sql(u"INSERT INTO zomrel_store (identity, generation) VALUES (?, ?)"_s,
            {identity, generation});
    }
    QVariant marks()
    {
        return scalar(u"SELECT count(*) FROM zomrel_store WHERE identity = generation"_s);
    }
    static void addARow(dao::Recordset& rows)
    {
        rows.AddNew();
        rows.Fields(u"Name"_s).SetValue(u"more"_s);
        rows.Update();
    }
    QVariant itemCount() { return scalar(u"SELECT count(*) FROM Items"_s); }
};

} // namespace

TEST_F(StoreMarkTest, WritesGoThroughWhileTheMarkStays)
{
    const auto rows = dynaset(u"Items"_s);
    rows->AddNew();
    rows->Fields(u"Name"_s).SetValue(u"second"_s);
    rows->Update();
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(11);
    rows->Update();
    EXPECT_EQ(scalar(u"SELECT Num FROM Items WHERE Code = 1"_s), 11);
    rows->Delete();
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Items"_s), 1);
}

TEST_F(StoreMarkTest, AddNewIsRefusedAfterARestore)
{
    const auto rows = dynaset(u"Items"_s);
    restoreByAnother();
    rows->AddNew();
    rows->Fields(u"Name"_s).SetValue(u"late"_s);
    expectRefused([&] { rows->Update(); });
}

TEST_F(StoreMarkTest, AddNewWithoutAValueIsRefusedAfterARestore)
{
    sql(u"CREATE TABLE Bare (Code COUNTER PRIMARY KEY, Name TEXT(10))"_s);
    const auto rows = dynaset(u"Bare"_s);
    restoreByAnother();
    rows->AddNew();
    expectRefused([&] { rows->Update(); });
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Bare"_s), 0);
}

TEST_F(StoreMarkTest, EditIsRefusedAfterARestore)
{
    const auto rows = dynaset(u"Items"_s);
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(99);
    restoreByAnother();
    expectRefused([&] { rows->Update(); });
}

TEST_F(StoreMarkTest, DeleteIsRefusedAfterARestore)
{
    const auto rows = dynaset(u"Items"_s);
    EXPECT_EQ(rows->RecordCount(), 1);
    restoreByAnother();
    expectRefused([&] { rows->Delete(); });
}

TEST_F(StoreMarkTest, TransactionAndSchemaChangeAreRefusedAfterARestore)
{
    const auto database = open();
    restoreByAnother();
    expectRefused([&] { database->BeginTrans(); });
    dao::TableDef added = database->CreateTableDef(u"More"_s);
    added.Fields().Append(added.CreateField(u"Name"_s, dao::dbText));
    expectRefused([&] { database->tableDefs().Append(added); });
}

TEST_F(StoreMarkTest, OpeningIsRefusedAfterARestore)
{
    open();
    restoreByAnother();
    if (isOnServer())
        sql(u"CREATE TABLE Restored (Name TEXT(10))"_s); // a restore creates its tables anew
    expectRefused([&] { open(); });
    ado::Connection report;
    expectRefused([&] { report.Open(u"Data Source="_s + path_); });
}

TEST_F(StoreMarkTest, WriteThroughAnOldHandleIsRefusedAfterTheFileWasReplaced)
{
    EMBEDDED_ONLY("a server's store is no file");
    const auto rows = dynaset(u"Items"_s);
    rows->AddNew();
    rows->Fields(u"Name"_s).SetValue(u"late"_s);
    const QString kept = folder_.filePath(u"kept.mdb"_s);
    raw_.reset();
    ASSERT_TRUE(QFile::rename(path_, kept));
    ASSERT_TRUE(QFile::copy(kept, path_));
    expectRefused([&] { rows->Update(); });
    EXPECT_EQ(PlainSql(kept).scalar(u"SELECT count(*) FROM Items"_s), 1);
}

TEST_F(StoreMarkTest, RenewingKeepsTheIdentity)
{
    const QVariantList before = mark();
    const auto database = open();
    dao::renewStoreMark(*database);
    EXPECT_EQ(mark()[0], before[0]);
    EXPECT_NE(mark()[1], before[1]);
    const auto rows = database->OpenRecordset(u"Items"_s, dao::dbOpenDynaset);
    rows->Delete(); // the process that renewed the mark goes on
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Items"_s), 0);
}

TEST_F(StoreMarkTest, MarkIsListedAmongNoTables)
{
    const auto database = open();
    EXPECT_EQ(database->tableDefs().Count(), 1);
    EXPECT_EQ(dao::ownTables(*database), QStringList{u"zomrel_store"_s});
}

TEST_F(OlderStoreTest, ReadingAddsNoMark)
{
    EXPECT_EQ(dynaset(u"Items"_s)->RecordCount(), 1);
    EXPECT_EQ(dao::ownTables(*open()), QStringList());
}

TEST_F(OlderStoreTest, FirstWriteAddsAMark)
{
    const auto rows = dynaset(u"Items"_s);
    addARow(*rows);
    EXPECT_EQ(marks(), 1);
    addARow(*rows);
    addARow(*dynaset(u"Items"_s));
    EXPECT_EQ(itemCount(), 4);
    EXPECT_EQ(marks(), 1);
}

TEST_F(OlderStoreTest, FirstWriteThatIsRolledBackAddsNoMark)
{
    const auto database = open();
    database->BeginTrans();
    database->Rollback();
    const auto rows = database->OpenRecordset(u"Items"_s, dao::dbOpenDynaset);
    rows->Delete();
    EXPECT_EQ(itemCount(), 0);
    EXPECT_EQ(marks(), 1);
}

TEST_F(OlderStoreTest, MarkFromAnotherStationIsAccepted)
{
    const auto rows = dynaset(u"Items"_s);
    markByAnother(u"same"_s, u"same"_s);
    addARow(*rows);
    addARow(*dynaset(u"Items"_s));
    EXPECT_EQ(itemCount(), 3);
    EXPECT_EQ(marks(), 1);
}

TEST_F(OlderStoreTest, RestoredStoreInItsPlaceIsRefused)
{
    const auto rows = dynaset(u"Items"_s);
    markByAnother(u"identity"_s, u"generation"_s);
    EXPECT_EQ(errorOf([&] { addARow(*rows); }), dao::storeReplaced);
    EXPECT_EQ(errorOf([&] { open(); }), dao::storeReplaced);
    EXPECT_EQ(itemCount(), 1);
}

TEST_F(OlderStoreTest, RoleThatOwnsNothingUsesTheStoreWithoutAMark)
{
    if (!isOnServer())
        GTEST_SKIP() << "the owner of a file may always write to it";
    raw_->exactly(u"DROP FUNCTION zomrel_count()"_s);
    const auto rows = dynaset(u"Items"_s);
    addARow(*rows);
    rows->MoveLast();
    rows->Delete();
    addARow(*dynaset(u"Items"_s));
    EXPECT_EQ(itemCount(), 2);
    EXPECT_EQ(dao::ownTables(*open()), QStringList());
}
