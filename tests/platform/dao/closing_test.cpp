#include "platform/dao/connection.h"
#include "platform/dao/fixture.h"
#include "platform/dao/table_copy.h"

using namespace daotest;

namespace {

class ClosingTest : public ItemsTest
{
};

TEST_F(ClosingTest, closedDatabase_failsEveryCallOnItsRecordset)
{
    add(1, 10);
    for (const auto type : {dao::dbOpenTable, dao::dbOpenDynaset}) {
        const auto rows = open()->OpenRecordset(u"Items"_s, type);
        const dao::Field field = rows->Fields(u"Num"_s);
        const auto pages = rows->pages();
        rows->database()->Close();
        const std::vector<std::function<void()>> calls = {
            [&] { rows->RecordCount(); },    [&] { rows->isBof(); },
            [&] { rows->isEof(); },          [&] { rows->hasCurrent(); },
            [&] { rows->MoveFirst(); },      [&] { rows->MoveLast(); },
            [&] { rows->MoveNext(); },       [&] { rows->MovePrevious(); },
            [&] { rows->Move(0); },          [&] { rows->SetIndex(u"PrimaryKey"_s); },
            [&] { rows->Index(); },          [&] { rows->Seek(u"="_s, 1); },
            [&] { rows->NoMatch(); },        [&] { rows->AddNew(); },
            [&] { rows->Edit(); },           [&] { rows->Update(); },
            [&] { rows->CancelUpdate(); },   [&] { rows->Delete(); },
            [&] { rows->FieldCount(); },     [&] { rows->Fields(0); },
            [&] { rows->Fields(u"Num"_s); }, [&] { rows->fieldInfos(); },
            [&] { rows->Requery(); },        [&] { rows->Close(); },
            [&] { rows->currentKey(); },     [&] { rows->moveToKey(1); },
            [&] { rows->pages(); },          [&] { field.Name(); },
            [&] { field.Type(); },           [&] { field.Size(); },
            [&] { field.Value(); },          [&] { dao::Field(field).SetValue(1); },
            [&] { pages->load(0); },
        };
        for (std::size_t i = 0; i < calls.size(); ++i)
            EXPECT_EQ(errorOf(calls[i]), 3420) << "call " << i;
        EXPECT_FALSE(rows->database()->isOpen());
        EXPECT_EQ(pages->rowCount(), 1) << "known values are returned without an exception";
        EXPECT_FALSE(pages->value(0, 0).isValid());
    }
}

TEST_F(ClosingTest, closedDatabase_failsEveryCall)
{
    const auto database = open();
    const dao::TableDef items = database->tableDefs()(u"Items"_s);
    database->Close();
    const std::vector<std::function<void()>> calls = {
        [&] { database->Name(); },
        [&] { database->OpenRecordset(u"Items"_s, dao::dbOpenTable); },
        [&] { database->OpenRecordset(u"SELECT * FROM Items"_s, dao::dbOpenDynaset); },
        [&] { database->tableDefs().Count(); },
        [&] { database->tableDefs()(0); },
        [&] { database->tableDefs()(u"Items"_s); },
        [&] { database->CreateTableDef(u"T"_s); },
        [&] { database->BeginTrans(); },
        [&] { database->CommitTrans(); },
        [&] { database->Rollback(); },
        [&] { database->Close(); },
        [&] { items.Name(); },
        [&] { items.Updatable(); },
        [&] { items.Fields().Count(); },
        [&] { items.indexes().Count(); },
    };
    for (std::size_t i = 0; i < calls.size(); ++i)
        EXPECT_EQ(errorOf(calls[i]), 3420) << "call " << i;
}

TEST_F(ClosingTest, definitionAfterItsDatabaseIsGone_throwsAnError)
{
    const dao::TableDef items = open()->tableDefs()(u"Items"_s);
    EXPECT_EQ(errorOf([&] { items.Fields().Count(); }), 3420);
}

TEST_F(ClosingTest, databaseHandleReleased_recordsetKeepsTheDatabaseOpen)
{
    add(1, 10);
    auto rows = table(u"Items"_s);
    EXPECT_TRUE(rows->database()->isOpen());
    EXPECT_EQ(rows->Fields(u"Num"_s).Value(), 10);
}

TEST_F(ClosingTest, lastHandleReleased_connectionIsClosed)
{
    add(1, 10);
    raw_.reset();
    auto database = open();
    auto rows = database->OpenRecordset(u"Items"_s, dao::dbOpenTable);
    auto pages = rows->pages();
    database.reset();
    rows.reset();
    dao::DBEngine::instance().Idle();
    EXPECT_EQ(dao::EngineConnection::living(), 1);
    pages.reset();
    dao::DBEngine::instance().Idle();
    EXPECT_EQ(dao::EngineConnection::living(), 0);
}

TEST_F(ClosingTest, closedRecordset_releasesItsDatabase)
{
    add(1, 10);
    raw_.reset();
    const auto rows = table(u"Items"_s);
    rows->Close();
    dao::DBEngine::instance().Idle();
    EXPECT_EQ(dao::EngineConnection::living(), 0);
    EXPECT_EQ(errorOf([&] { rows->MoveFirst(); }), 3420);
    EXPECT_EQ(rows->database(), nullptr);
}

TEST_F(ClosingTest, oneDatabaseClosed_othersKeepWorking)
{
    add(1, 10);
    const auto kept = dynaset(u"Items"_s);
    for (int i = 0; i < 11; ++i)
        dynaset(u"Items"_s);
    open()->Close();
    EXPECT_EQ(kept->Fields(u"Num"_s).Value(), 10);
}

/// The read-only transaction of a snapshot must end with its database, because a process may share
/// one connection among its databases.
TEST_F(ClosingTest, databaseReleasedDuringASnapshot_othersCanWrite)
{
    const auto other = open();
    {
        const auto database = open();
        dao::beginSnapshot(*database);
    }
    const auto rows = other->OpenRecordset(u"Items"_s, dao::dbOpenTable);
    rows->AddNew();
    rows->Fields(u"Num"_s).SetValue(20);
    rows->Update();
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Items"_s), 1);
}

} // namespace
