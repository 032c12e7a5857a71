#include "platform/dao/fixture.h"

#include "platform/dao/engine/connection_pool.h"

#include <QFile>

using namespace daotest;

namespace {

/// Databases that are opened one after another use the same connection. The results must be the
/// same as with a new connection.
class PoolTest : public ItemsTest
{
protected:
    int openOnce() const
    {
        return open()->OpenRecordset(u"Items"_s, dao::dbOpenTable)->RecordCount();
    }
};

TEST_F(PoolTest, databasesOneAfterAnother_useOneConnection)
{
    add(1, 10);
    raw_.reset();
    openOnce();
    EXPECT_EQ(dao::EngineConnection::living(), 1);
    openOnce();
    EXPECT_EQ(dao::EngineConnection::living(), 1);
}

TEST_F(PoolTest, databasesAtTheSameTime_haveAConnectionEachInAFile)
{
    add(1, 10);
    raw_.reset();
    openOnce();
    const auto first = open();
    const auto second = open();
    // All databases of the process on the same server share one connection.
    EXPECT_EQ(dao::EngineConnection::living(), isOnServer() ? 1 : 2);
}

/// A later statement must not become part of a transaction that is never committed.
TEST_F(PoolTest, connectionInATransaction_isNotReused)
{
    raw_.reset();
    {
        const auto left = open();
        left->session().begin();
        left->session().run(u"INSERT INTO \"Items\" (\"Num\", \"Done\") VALUES (1, 0)"_s);
    }
    EXPECT_EQ(openOnce(), 0);
    const auto rows = open()->OpenRecordset(u"Items"_s, dao::dbOpenTable);
    rows->AddNew();
    rows->Fields(u"Num"_s).SetValue(2);
    rows->Update();
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Items"_s), 1);
}

TEST_F(PoolTest, fileReplacedAtTheSamePath_isReadAtTheNextOpening)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    add(1, 10);
    EXPECT_EQ(openOnce(), 1);
    raw_.reset();
    const QString copy = path_ + u".copy"_s;
    ASSERT_TRUE(QFile::copy(path_, copy));
    PlainSql(copy).rows(u"DELETE FROM Items"_s);
    ASSERT_TRUE(QFile::rename(path_, path_ + u".old"_s));
    ASSERT_TRUE(QFile::rename(copy, path_));
    EXPECT_EQ(openOnce(), 0);
}

TEST_F(PoolTest, fieldAddedByAnotherStation_isSeenAtTheNextOpening)
{
    add(1, 10);
    const int before = open()->OpenRecordset(u"Items"_s, dao::dbOpenTable)->FieldCount();
    sql(u"ALTER TABLE Items ADD COLUMN Extra LONG"_s);
    EXPECT_EQ(open()->OpenRecordset(u"Items"_s, dao::dbOpenTable)->FieldCount(), before + 1);
}

TEST_F(PoolTest, lockedFile_failsAtTheNextOpening)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    add(1, 10);
    openOnce();
    sql(u"BEGIN EXCLUSIVE"_s);
    EXPECT_EQ(errorOf([&] { open(); }), 3260);
    sql(u"COMMIT"_s);
    EXPECT_EQ(openOnce(), 1);
}

TEST_F(PoolTest, fileThatIsNoLongerAStore_failsAtTheNextOpening)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    add(1, 10);
    openOnce();
    raw_.reset();
    QFile file(path_);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(QByteArray(4096, 'x'));
    file.close();
    EXPECT_EQ(errorOf([&] { open(); }), 3343);
}

} // namespace
