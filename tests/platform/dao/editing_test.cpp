#include "platform/dao/fixture.h"

#include "platform/dao/engine/session.h"

#include <QSqlQuery>

using namespace daotest;

namespace {

class EditingTest : public ItemsTest
{
};

TEST_F(EditingTest, edit_readsTheRowAgainAndWritesOnlyChangedFields)
{
    add(1, 10, u"old"_s);
    const auto rows = dynaset(u"Items"_s);
    sql(u"UPDATE Items SET Num = 20, Name = 'theirs'"_s);
    EXPECT_EQ(rows->Fields(u"Num"_s).Value(), 10) << "as it was when it was visited";
    rows->Edit();
    EXPECT_EQ(rows->Fields(u"Num"_s).Value(), 20);
    rows->Fields(u"Amount"_s).SetValue(1.5);
    sql(u"UPDATE Items SET Name = 'again'"_s);
    rows->Update();
    EXPECT_EQ(scalar(u"SELECT Name FROM Items"_s), u"again"_s);
    EXPECT_EQ(scalar(u"SELECT Amount FROM Items"_s), 1.5);
    EXPECT_EQ(rows->Fields(u"Amount"_s).Value(), 1.5);
}

TEST_F(EditingTest, editWithoutChanges_writesNothing)
{
    sql(u"INSERT INTO Items (Code, Num, Name, Done) VALUES (1, 10, 'x', 1)"_s);
    sql(u"CREATE TABLE Writes (N LONG)"_s);
    if (isOnServer()) {
        raw_->exactly(u"CREATE FUNCTION watch() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN "
                      "INSERT INTO \"Writes\" VALUES (1); RETURN NULL; END $$"_s);
        raw_->exactly(u"CREATE TRIGGER watch AFTER UPDATE ON \"Items\" FOR EACH ROW "
                      "EXECUTE FUNCTION watch()"_s);
    } else {
        sql(u"CREATE TRIGGER Watch AFTER UPDATE ON Items "
            "BEGIN INSERT INTO Writes VALUES (1); END"_s);
    }
    const auto rows = dynaset(u"Items"_s);
    rows->Edit();
    rows->Update();
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(u"10"_s);
    rows->Fields(u"Name"_s).SetValue(u"x"_s);
    rows->Fields(u"Day"_s).SetValue(QVariant());
    rows->Fields(u"Done"_s).SetValue(true);
    rows->Update();
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Writes"_s), 0);
    rows->Edit();
    rows->Fields(u"Name"_s).SetValue(u"X"_s);
    rows->Fields(u"Day"_s).SetValue(QDate(2026, 1, 1));
    rows->Update();
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Writes"_s), 1) << "one statement for all fields";
    const auto stored = dynaset(u"Items"_s);
    EXPECT_EQ(stored->Fields(u"Name"_s).Value(), u"X"_s);
    EXPECT_EQ(stored->Fields(u"Day"_s).Value(), QDate(2026, 1, 1));
}

/// The test simulates the full disk with a limit of the engine.
TEST_F(EditingTest, fullDisk_throwsDiskFullAndKeepsTheStore)
{
    EMBEDDED_ONLY("the test cannot fill a server's disk");
    constexpr int most = 1000;
    const auto database = open();
    const int pages = database->session().rows(u"PRAGMA page_count"_s).front().front().toInt();
    database->session().rows(u"PRAGMA max_page_count = %1"_s.arg(pages + 2));
    const auto rows = database->OpenRecordset(u"Items"_s, dao::dbOpenTable);
    int added = 0;
    int error = 0;
    while (error == 0 && added < most) {
        rows->AddNew();
        rows->Fields(u"Note"_s).SetValue(QString(500, u'x'));
        error = errorOf([&] { rows->Update(); });
        added += error == 0 ? 1 : 0;
    }
    EXPECT_EQ(error, 3026);
    EXPECT_GT(added, 0);
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Items"_s), added);
    EXPECT_EQ(scalar(u"PRAGMA integrity_check"_s).toString(), u"ok"_s);
}

TEST_F(EditingTest, storedValueOfAnotherType_canBeReplaced)
{
    EMBEDDED_ONLY("a server does not store values of another type");
    sql(u"INSERT INTO Items (Code, Num) VALUES (1, 'many')"_s);
    const auto rows = dynaset(u"Items"_s);
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(3);
    rows->Update();
    EXPECT_EQ(rows->Fields(u"Num"_s).Value(), 3);
}

/// A user may correct a line by deleting it and adding it again on another station.
TEST_F(EditingTest, rowAddedAfterADeletion_isNotTheDeletedRow)
{
    raw_.reset();
    path_ = folder_.filePath(u"Made.mdb"_s);
    const auto database = dao::DBEngine::instance().Workspaces(0).CreateDatabase(path_);
    dao::TableDef lines = database->CreateTableDef(u"Lines"_s);
    lines.Fields().Append(lines.CreateCounter(u"Code"_s));
    lines.Fields().Append(lines.CreateField(u"Name"_s, dao::dbText, 10));
    lines.indexes().Append(
        dao::Index({.name = u"PrimaryKey"_s, .fields = {u"Code"_s}, .primary = true}));
    database->tableDefs().Append(lines);
    const auto add = [&](const QString& name) {
        const auto rows = table(u"Lines"_s);
        rows->AddNew();
        rows->Fields(u"Name"_s).SetValue(name);
        rows->Update();
    };
    add(u"a"_s);
    add(u"wrong"_s);
    const auto current = dynaset(u"Lines"_s);
    current->MoveLast();
    const auto list = dynaset(u"Lines"_s);
    const auto theirs = table(u"Lines"_s);
    theirs->MoveLast();
    theirs->Delete();
    add(u"right"_s);

    EXPECT_EQ(errorOf([&] { current->Delete(); }), 3167);
    EXPECT_EQ(errorOf([&] { current->Edit(); }), 3167);
    list->MoveLast();
    EXPECT_FALSE(list->hasCurrent());
    EXPECT_EQ(scalar(u"SELECT group_concat(Name) FROM Lines"_s), u"a,right"_s);
    EXPECT_EQ(scalar(u"SELECT Code FROM Lines WHERE Name = 'right'"_s), 3);
}

TEST_F(EditingTest, updateWithoutAddNewOrEdit_throwsAnError)
{
    const auto rows = dynaset(u"Items"_s);
    EXPECT_EQ(errorOf([&] { rows->Edit(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3020);
    EXPECT_EQ(errorOf([&] { rows->CancelUpdate(); }), 3020);
}

TEST_F(EditingTest, move_discardsAssignedValues)
{
    add(1, 10);
    add(2, 20);
    const auto rows = dynaset(u"Items"_s);
    const std::vector<std::function<void()>> moves = {
        [&] { rows->MoveFirst(); }, [&] { rows->MoveLast(); },
        [&] { rows->Move(0); },     [&] { rows->MovePrevious(); },
        [&] { rows->MoveNext(); },  [&] { rows->moveToKey(rows->currentKey()); },
    };
    for (const auto& move : moves) {
        rows->Edit();
        rows->Fields(u"Num"_s).SetValue(99);
        move();
        EXPECT_EQ(errorOf([&] { rows->Update(); }), 3020);
    }
    rows->AddNew();
    rows->MoveFirst();
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3020);
    EXPECT_EQ(scalar(u"SELECT group_concat(Num) FROM Items"_s), u"10,20"_s);
}

TEST_F(EditingTest, eachUpdate_addsOneRow)
{
    const auto rows = dynaset(u"Items"_s);
    for (int i = 0; i < 3; ++i) {
        rows->AddNew();
        rows->Fields(u"Num"_s).SetValue(i);
        rows->Update();
        EXPECT_EQ(errorOf([&] { rows->Update(); }), 3020);
    }
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Items"_s), 3);
}

TEST_F(EditingTest, addNewWithoutValues_addsARow)
{
    sql(u"CREATE TABLE Bare (A LONG, B TEXT(5))"_s);
    const auto rows = table(u"Bare"_s);
    rows->AddNew();
    rows->Update();
    EXPECT_EQ(rows->RecordCount(), 1);
}

TEST_F(EditingTest, duplicateKey_isRefusedAndTheStoreIsUnchanged)
{
    add(1, 10);
    add(2, 20);
    const auto rows = dynaset(u"Items"_s);
    rows->AddNew();
    rows->Fields(u"Code"_s).SetValue(2);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3022);
    rows->CancelUpdate();
    rows->Edit();
    rows->Fields(u"Code"_s).SetValue(2);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3022);
    EXPECT_EQ(scalar(u"SELECT group_concat(Code) FROM Items"_s), u"1,2"_s);
    EXPECT_EQ(rows->RecordCount(), 1);
}

TEST_F(EditingTest, nullInARequiredField_isRefused)
{
    sql(u"CREATE TABLE Strict (A LONG NOT NULL, B LONG)"_s);
    const auto rows = table(u"Strict"_s);
    EXPECT_TRUE(rows->fieldInfos()[0].required);
    rows->AddNew();
    rows->Fields(u"B"_s).SetValue(1);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3314);
    EXPECT_EQ(rows->RecordCount(), 0);
}

TEST_F(EditingTest, rowDeletedByAnotherStation_throwsRecordDeleted)
{
    for (int code : {1, 2, 3})
        add(code, code);
    const auto rows = dynaset(u"Items"_s);
    rows->MoveLast();
    rows->MoveFirst();
    sql(u"DELETE FROM Items WHERE Code = 2"_s);
    rows->MoveNext();
    EXPECT_FALSE(rows->hasCurrent());
    EXPECT_FALSE(rows->isEof());
    EXPECT_EQ(errorOf([&] { rows->Fields(u"Num"_s).Value(); }), 3167);
    EXPECT_EQ(errorOf([&] { rows->Edit(); }), 3167);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3167);
    EXPECT_EQ(rows->RecordCount(), 3);
    rows->MoveNext();
    EXPECT_EQ(rows->Fields(u"Num"_s).Value(), 3);
}

TEST_F(EditingTest, rowDeletedDuringAnEdit_throwsRecordDeleted)
{
    add(1, 1);
    const auto rows = dynaset(u"Items"_s);
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(5);
    sql(u"DELETE FROM Items"_s);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3167);
    rows->CancelUpdate();
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3167);
}

TEST_F(EditingTest, lockedStore_failsAfterTheLockWaitAndWritesNothing)
{
    add(1, 10);
    const auto rows = dynaset(u"Items"_s);
    sql(u"BEGIN EXCLUSIVE"_s);
    EXPECT_EQ(errorOf([&] { rows->Move(0); }), 3260);
    sql(u"COMMIT"_s);
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(11);
    sql(u"BEGIN IMMEDIATE"_s);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3260);
    sql(u"COMMIT"_s);
    EXPECT_EQ(scalar(u"SELECT Num FROM Items"_s), 10);
    rows->Update();
    EXPECT_EQ(scalar(u"SELECT Num FROM Items"_s), 11) << "the assignment was kept";
}

TEST_F(EditingTest, anotherStationReads_deletionThrowsLocked)
{
    EMBEDDED_ONLY("on a server, readers do not block writers");
    add(1, 10);
    add(2, 20);
    const auto rows = dynaset(u"Items"_s);
    {
        QSqlQuery halfRead(raw_->database());
        halfRead.setForwardOnly(true);
        ASSERT_TRUE(halfRead.exec(u"SELECT Num FROM Items"_s));
        ASSERT_TRUE(halfRead.next());
        EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3260);
        EXPECT_TRUE(rows->hasCurrent()) << "what was not deleted can be read";
    }
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Items"_s), 2);
    rows->Delete();
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Items"_s), 1);
}

TEST_F(EditingTest, betweenTwoCalls_noLockIsHeld)
{
    for (int code = 1; code <= 200; ++code)
        add(code, code);
    const auto first = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    const auto second = table(u"Items"_s);
    second->SetIndex(u"ByNum"_s);
    const auto pages = first->pages();
    pages->load(100);
    second->MoveNext();
    first->Edit();
    sql(u"PRAGMA busy_timeout = 0"_s);
    sql(u"BEGIN EXCLUSIVE"_s);
    sql(u"UPDATE Items SET Num = Num + 1"_s);
    sql(u"COMMIT"_s);
    EXPECT_EQ(scalar(u"SELECT min(Num) FROM Items"_s), 2);
}

TEST_F(EditingTest, counterWithoutTriggers_isNumberedByTheInsert)
{
    EMBEDDED_ONLY("a primary key on a server cannot be Null");
    sql(u"INSERT INTO Items (Code) VALUES (NULL)"_s);
    add(41, 1);
    const auto rows = dynaset(u"Items"_s);
    EXPECT_FALSE(rows->Fields(u"Code"_s).Value().isValid()) << "rows without a number are rows";
    rows->AddNew();
    rows->Update();
    rows->MoveLast();
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 42);
    rows->MoveFirst();
    rows->Edit();
    rows->Fields(u"Name"_s).SetValue(u"named"_s);
    rows->Update();
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Items WHERE Name = 'named'"_s), 1);
}

TEST_F(EditingTest, transaction_takesEffectAsAWholeOrNotAtAll)
{
    add(1, 10);
    const auto rows = dynaset(u"Items"_s);
    const auto change = [&](int value) {
        rows->Edit();
        rows->Fields(u"Num"_s).SetValue(value);
        rows->Update();
    };
    rows->database()->BeginTrans();
    change(11);
    rows->database()->Rollback();
    EXPECT_EQ(scalar(u"SELECT Num FROM Items"_s), 10);
    rows->Move(0);
    rows->database()->BeginTrans();
    change(12);
    rows->database()->CommitTrans();
    EXPECT_EQ(scalar(u"SELECT Num FROM Items"_s), 12);
}

} // namespace
