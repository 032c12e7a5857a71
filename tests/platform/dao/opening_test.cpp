#include "platform/dao/fixture.h"

#include "platform/dao/engine/session.h"
#include "support/ordinary_user.h"

#include <QFile>

using namespace daotest;

namespace {

class OpeningTest : public DaoTest
{
protected:
    QString descriptionOfOpening()
    {
        try {
            open();
        } catch (const runtime::RunTimeError& error) {
            return error.description();
        }
        return {};
    }
};

TEST_F(OpeningTest, missingFile_throwsAnErrorAndIsNotCreated)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    EXPECT_EQ(errorOf([&] { open(); }), 3024);
    EXPECT_FALSE(QFile::exists(path_));
    EXPECT_TRUE(descriptionOfOpening().contains(path_));
}

TEST_F(OpeningTest, missingFolder_throwsAnError)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    path_ = folder_.filePath(u"nowhere/Aluminium.mdb"_s);
    EXPECT_EQ(errorOf([&] { open(); }), 3024);
    EXPECT_EQ(errorOf([&] { dao::DBEngine::instance().Workspaces(0).CreateDatabase(path_); }),
              3024);
}

TEST_F(OpeningTest, emptyFile_isRefused)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    writeFile({});
    EXPECT_EQ(errorOf([&] { open(); }), 3343);
    EXPECT_EQ(QFile(path_).size(), 0);
}

TEST_F(OpeningTest, fileThatIsNotAStore_isRefused)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    for (const QByteArray& contents : {QByteArray("x"), QByteArray(16, '\0'),
                                       QByteArray("Standard Jet DB"), QByteArray(10000, 'z')}) {
        writeFile(contents);
        EXPECT_EQ(errorOf([&] { open(); }), 3343) << contents.left(20).constData();
        EXPECT_TRUE(descriptionOfOpening().contains(path_));
    }
}

TEST_F(OpeningTest, folder_isRefused)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    ASSERT_TRUE(QDir().mkpath(path_));
    EXPECT_EQ(errorOf([&] { open(); }), 3051);
}

TEST_F(OpeningTest, damagedStore_throwsCorruptDatabase)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    sql(u"CREATE TABLE Items (Code COUNTER PRIMARY KEY)"_s);
    raw_.reset();
    QFile file(path_);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.seek(100));
    ASSERT_EQ(file.write(QByteArray(3000, '\xff')), 3000);
    file.close();
    EXPECT_EQ(errorOf([&] { open(); }), 3049);
}

TEST_F(OpeningTest, damagedHeader_throwsCorruptDatabase)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    sql(u"CREATE TABLE Items (Code COUNTER PRIMARY KEY)"_s);
    raw_.reset();
    QFile file(path_);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.seek(16));
    ASSERT_EQ(file.write("\x03\x03", 2), 2) << "an invalid page size";
    file.close();
    EXPECT_EQ(errorOf([&] { open(); }), 3049);
}

TEST_F(OpeningTest, lockedStore_failsAfterTheLockWait)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    sql(u"CREATE TABLE Items (Code COUNTER PRIMARY KEY)"_s);
    sql(u"BEGIN EXCLUSIVE"_s);
    EXPECT_EQ(errorOf([&] { open(); }), 3260);
    sql(u"ROLLBACK"_s);
    EXPECT_EQ(errorOf([&] { open(); }), 0);
}

TEST_F(OpeningTest, pathWithAnyCharacters_canBeOpened)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    for (const QString& name : {u"חלונות ודלתות.mdb"_s, u"a b?c#d%20e&mode=ro.mdb"_s,
                                u"x;y'z\"w.mdb"_s, u"file:memory.mdb"_s}) {
        path_ = folder_.filePath(name);
        dao::DBEngine::instance().Workspaces(0).CreateDatabase(path_);
        EXPECT_TRUE(QFile::exists(path_)) << qPrintable(name);
        const auto database = open();
        EXPECT_EQ(database->Name(), path_);
        dao::TableDef table = database->CreateTableDef(u"T"_s);
        table.Fields().Append(table.CreateField(u"F"_s, dao::dbLong));
        EXPECT_EQ(errorOf([&] { database->tableDefs().Append(table); }), 0) << qPrintable(name);
    }
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files).size(), 4);
}

TEST_F(OpeningTest, opening_doesNotWriteTheFile)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    sql(u"CREATE TABLE Items (Code COUNTER PRIMARY KEY)"_s);
    raw_.reset();
    QFile file(path_);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();
    open()->OpenRecordset(u"Items"_s, dao::dbOpenTable);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), before);
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files).size(), 1);
}

TEST_F(OpeningTest, storeWithAWriteAheadLog_getsARollbackJournal)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    sql(u"CREATE TABLE Items (Code COUNTER PRIMARY KEY)"_s);
    ASSERT_EQ(scalar(u"PRAGMA journal_mode = WAL"_s).toString(), u"wal"_s);
    raw_.reset();
    open();
    EXPECT_EQ(scalar(u"PRAGMA journal_mode"_s).toString(), u"delete"_s);
}

/// A power cut after a commit must not undo it. In a rollback journal only EXTRA ensures that.
class DurabilityTest : public OpeningTest
{
protected:
    static void expectDurableCommits(dao::Database& database)
    {
        constexpr int extra = 3;
        EXPECT_EQ(database.session().rows(u"PRAGMA synchronous"_s).front().front(), extra);
        EXPECT_EQ(database.session().rows(u"PRAGMA journal_mode"_s).front().front(), u"delete"_s);
    }
};

TEST_F(DurabilityTest, newAndReusedConnections_syncTheFolderAfterACommit)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    sql(u"CREATE TABLE Items (Code COUNTER PRIMARY KEY)"_s);
    raw_.reset();
    expectDurableCommits(*open());
    EXPECT_EQ(dao::EngineConnection::living(), 1);
    expectDurableCommits(*open());
}

TEST_F(DurabilityTest, databasesThatAreOpenAtTheSameTime_syncTheFolderAfterACommit)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    sql(u"CREATE TABLE Items (Code COUNTER PRIMARY KEY)"_s);
    const auto first = open();
    const auto second = open();
    expectDurableCommits(*first);
    expectDurableCommits(*second);
    first->BeginTrans();
    expectDurableCommits(*first);
    first->CommitTrans();
    expectDurableCommits(*first);
}

TEST_F(DurabilityTest, createdStore_syncsTheFolderAfterACommit)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    expectDurableCommits(*dao::DBEngine::instance().Workspaces(0).CreateDatabase(path_));
    expectDurableCommits(*open());
}

TEST_F(DurabilityTest, storeWithAWriteAheadLog_getsARollbackJournalAndSyncsTheFolder)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    sql(u"CREATE TABLE Items (Code COUNTER PRIMARY KEY)"_s);
    ASSERT_EQ(scalar(u"PRAGMA journal_mode = WAL"_s).toString(), u"wal"_s);
    raw_.reset();
    expectDurableCommits(*open());
}

TEST_F(OpeningTest, readOnlyFile_canBeReadButNotWritten)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    sql(u"CREATE TABLE Items (Code COUNTER PRIMARY KEY, Num LONG)"_s);
    sql(u"INSERT INTO Items VALUES (1, 5)"_s);
    raw_.reset();
    ASSERT_TRUE(QFile::setPermissions(path_, QFile::ReadOwner));
    const testsupport::OrdinaryUser user;
    const auto rows = table(u"Items"_s);
    EXPECT_EQ(rows->Fields(u"Num"_s).Value(), 5);
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(6);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3027);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3027);
    EXPECT_EQ(scalar(u"SELECT Num FROM Items"_s), 5);
}

TEST_F(OpeningTest, unreadableFile_isRefused)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    sql(u"CREATE TABLE Items (Code COUNTER PRIMARY KEY)"_s);
    raw_.reset();
    ASSERT_TRUE(QFile::setPermissions(path_, QFile::Permissions()));
    const testsupport::OrdinaryUser user;
    EXPECT_EQ(errorOf([&] { open(); }), 3051);
}

TEST_F(OpeningTest, otherWorkspace_throwsItemNotFound)
{
    EXPECT_EQ(errorOf([] { dao::DBEngine::instance().Workspaces(1); }), 3265);
}

TEST_F(OpeningTest, folderThatCannotBeWritten_getsNoStore)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    ASSERT_TRUE(QFile::setPermissions(folder_.path(), QFile::ReadOwner | QFile::ExeOwner));
    const testsupport::OrdinaryUser user;
    const int error =
        errorOf([&] { dao::DBEngine::instance().Workspaces(0).CreateDatabase(path_); });
    QFile::setPermissions(folder_.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(error, 3024);
    EXPECT_FALSE(QFile::exists(path_));
}

} // namespace
