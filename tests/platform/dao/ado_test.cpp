#include "platform/dao/connection.h"
#include "platform/dao/fixture.h"

using namespace daotest;

namespace {

class AdoTest : public ItemsTest
{
protected:
    QString text() const { return u"Provider=Microsoft.Jet.OLEDB.3.51;Data Source="_s + path_; }

    /// Adds rows with the codes 1 to `count`. Sorted by Num, they are in descending order of codes.
    void addMany(int count)
    {
        sql(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
            "INSERT INTO Items (Code, Num, Name, Amount) SELECT i, 5000 - i, 'x', 5 FROM n"_s,
            {count});
    }

    std::shared_ptr<ado::Recordset> execute(const QString& query)
    {
        ado::Connection connection;
        connection.Open(text(), u""_s, u""_s, -1);
        return connection.Execute(query);
    }
};

TEST_F(AdoTest, query_returnsItsRowsInPages)
{
    for (int code = 1; code <= 9; ++code)
        add(code, 10 - code);
    const auto rows = execute(u"SELECT * FROM ITEMS ORDER BY NUM ASC"_s);
    EXPECT_EQ(rows->RecordCount(), 9);
    EXPECT_EQ(rows->FieldCount(), 8);
    EXPECT_EQ(rows->ordinalOf(u"NUM"_s), 1);
    EXPECT_EQ(rows->ordinalOf(u"Nun"_s), -1);
    const auto page = rows->rows(4, 4);
    ASSERT_EQ(page.size(), 4u);
    EXPECT_EQ(page[0][0], 5);
    EXPECT_EQ(page[3][0], 2);
    EXPECT_EQ(page[0][6], 0);
    EXPECT_FALSE(page[0][5].isValid());
    EXPECT_EQ(rows->rows(8, 4).size(), 1u);
    EXPECT_TRUE(rows->rows(9, 4).empty());
    EXPECT_TRUE(rows->rows(2, 0).empty());
}

TEST_F(AdoTest, shortQuery_returnsTheRowsOfTheMomentOfExecution)
{
    for (int code : {1, 2, 3})
        add(code, code);
    const auto rows = execute(u"SELECT * FROM Items ORDER BY Num"_s);
    EXPECT_EQ(rows->rowsAtHand(), 3);
    add(4, 0);
    sql(u"DELETE FROM Items WHERE Code = 2"_s);
    sql(u"UPDATE Items SET Num = 70 WHERE Code = 1"_s);
    EXPECT_FALSE(rows->readAll()) << "all rows are loaded";
    EXPECT_EQ(rows->RecordCount(), 3);
    const auto all = rows->rows(0, 10);
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0][1], 1);
    EXPECT_EQ(all[1][0], 2);
    EXPECT_EQ(all[1][1], 2);
    EXPECT_EQ(all[2][0], 3);
}

TEST_F(AdoTest, queryWithoutRows_returnsNone)
{
    const auto rows = execute(u"SELECT * FROM Items WHERE Num = 5"_s);
    EXPECT_EQ(rows->RecordCount(), 0);
    EXPECT_TRUE(rows->rows(0, 4).empty());
    EXPECT_FALSE(rows->readAll());
}

TEST_F(AdoTest, longQuery_loadsItsFirstRowsOnly)
{
    addMany(1000);
    const auto rows = execute(u"SELECT * FROM Items WHERE Amount = 5 ORDER BY Num"_s);
    EXPECT_EQ(rows->RecordCount(), 1000);
    const int held = rows->rowsAtHand();
    ASSERT_GT(held, 4);
    ASSERT_LT(held, 1000);
    EXPECT_EQ(rows->rows(0, 2)[1][0], 999) << "in the order of the query";
    EXPECT_FALSE(rows->readAll()) << "nothing has changed since";
    EXPECT_EQ(rows->rowsAtHand(), 1000);
    const auto all = rows->rows(0, 1000);
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(all[std::size_t(i)][0], 1000 - i);
}

TEST_F(AdoTest, longQueryReadAgain_returnsOneSnapshot)
{
    addMany(1000);
    const QString query = u"SELECT * FROM Items WHERE Amount = 5 ORDER BY Num"_s;
    const auto rows = execute(query);
    const auto others = execute(query);
    sql(u"DELETE FROM Items WHERE Code = 3"_s);
    sql(u"UPDATE Items SET Name = 'y' WHERE Code = 1000"_s);
    EXPECT_TRUE(rows->readAll());
    EXPECT_EQ(rows->RecordCount(), 999);
    EXPECT_EQ(rows->rows(0, 1)[0][2], u"y"_s);
    EXPECT_EQ(rows->rows(997, 5)[0][0], 2);
    sql(u"DELETE FROM Items"_s);
    EXPECT_FALSE(rows->readAll());
    EXPECT_EQ(rows->rows(998, 1)[0][0], 1) << "as in the snapshot";
    EXPECT_TRUE(others->rows(990, 5).empty()) << "all rows come from the last snapshot";
    EXPECT_EQ(others->RecordCount(), 0);
}

TEST_F(AdoTest, readAllFails_loadedRowsStayUnchanged)
{
    addMany(1000);
    const auto rows = execute(u"SELECT * FROM Items ORDER BY Num"_s);
    const int held = rows->rowsAtHand();
    sql(u"BEGIN EXCLUSIVE"_s);
    EXPECT_EQ(errorOf([&] { rows->readAll(); }), 3260);
    EXPECT_EQ(errorOf([&] { rows->rows(held - 1, 2); }), 3260);
    sql(u"ROLLBACK"_s);
    EXPECT_EQ(rows->rowsAtHand(), held);
    EXPECT_EQ(rows->rows(0, 1)[0][0], 1000);
    EXPECT_EQ(rows->rows(999, 1)[0][0], 1);
}

TEST_F(AdoTest, connectionDestroyed_rowsCanBeReadAndNoLockIsHeld)
{
    addMany(1000);
    raw_.reset();
    const auto rows = execute(u"SELECT * FROM Items ORDER BY Num"_s);
    EXPECT_EQ(rows->rows(0, 1)[0][0], 1000);
    dao::DBEngine::instance().Idle();
    EXPECT_EQ(dao::EngineConnection::living(), 1);
    sql(u"PRAGMA busy_timeout = 0"_s);
    sql(u"BEGIN EXCLUSIVE"_s);
    sql(u"COMMIT"_s);
    EXPECT_EQ(rows->rows(999, 1)[0][0], 1);
}

TEST_F(AdoTest, allRowsLoaded_connectionIsReleased)
{
    addMany(1000);
    raw_.reset();
    const auto few = execute(u"SELECT * FROM Items WHERE Num = 4000"_s);
    const auto many = execute(u"SELECT * FROM Items"_s);
    many->readAll();
    dao::DBEngine::instance().Idle();
    EXPECT_EQ(dao::EngineConnection::living(), 0);
    EXPECT_EQ(few->rows(0, 1)[0][0], 1000);
    EXPECT_EQ(many->rows(999, 1)[0][0], 1000);
}

TEST_F(AdoTest, connectionText_pathIsTakenFromTheDataSource)
{
    add(1, 5);
    for (const QString& each :
         {u"Data Source="_s + path_, u"data source = "_s.chopped(1) + path_ + u";Mode=Read"_s,
          text() + u";"_s}) {
        ado::Connection connection;
        EXPECT_EQ(errorOf([&] { connection.Open(each); }), 0) << qPrintable(each);
    }
    ado::Connection connection;
    EXPECT_EQ(errorOf([&] { connection.Open(u"Provider=x"_s); }), 3024);
    EXPECT_EQ(errorOf([&] { connection.Open(u"Data Source="_s + path_ + u"x"_s); }), 3024);
}

TEST_F(AdoTest, invalidQueryOrValue_throwsTheErrorOfTheStore)
{
    ado::Connection closed;
    EXPECT_EQ(errorOf([&] { closed.Execute(u"SELECT * FROM Items"_s); }), 3420);
    EXPECT_EQ(errorOf([&] { execute(u"SELECT * FROM Nothing"_s); }), 3078);
    EXPECT_EQ(errorOf([&] { execute(u"SELECT * FROM Items ORDER BY Nun"_s); }), 3061);
    EXPECT_EQ(errorOf([&] { execute(u"Items"_s); }), 3131);
    if (isOnServer()) // A server refuses to store a value of another type.
        return;
    sql(u"INSERT INTO Items (Num) VALUES ('many')"_s);
    const auto rows = execute(u"SELECT * FROM Items"_s);
    EXPECT_EQ(errorOf([&] { rows->rows(0, 1); }), 3421);
}

} // namespace
