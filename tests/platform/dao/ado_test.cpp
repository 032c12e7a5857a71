#include "platform/dao/connection.h"
#include "platform/dao/fixture.h"

using namespace daotest;

namespace {

class AdoTest : public ItemsTest
{
protected:
    QString text() const { return u"Provider=Microsoft.Jet.OLEDB.3.51;Data Source="_s + path_; }

    std::shared_ptr<ado::Recordset> execute(const QString& query)
    {
        ado::Connection connection;
        connection.Open(text(), u""_s, u""_s, -1);
        return connection.Execute(query);
    }
};

TEST_F(AdoTest, GivesTheRowsOfAQueryInPages)
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

TEST_F(AdoTest, KeepsItsRowsAndReadsTheirValuesLate)
{
    for (int code : {1, 2, 3})
        add(code, code);
    const auto rows = execute(u"SELECT * FROM Items ORDER BY Num"_s);
    add(4, 0);
    sql(u"DELETE FROM Items WHERE Code = 2"_s);
    sql(u"UPDATE Items SET Num = 70 WHERE Code = 1"_s);
    EXPECT_EQ(rows->RecordCount(), 3);
    const auto all = rows->rows(0, 10);
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0][1], 70);
    ASSERT_EQ(all[1].size(), 8u);
    for (const QVariant& value : all[1])
        EXPECT_FALSE(value.isValid());
    EXPECT_EQ(all[2][0], 3);
}

TEST_F(AdoTest, OutlivesItsConnectionAndHoldsNoLock)
{
    add(1, 5);
    raw_.reset();
    auto rows = execute(u"SELECT * FROM Items"_s);
    EXPECT_EQ(rows->rows(0, 1)[0][1], 5);
    dao::DBEngine::instance().Idle();
    EXPECT_EQ(dao::EngineConnection::living(), 1);
    sql(u"PRAGMA busy_timeout = 0"_s);
    sql(u"BEGIN EXCLUSIVE"_s);
    sql(u"COMMIT"_s);
}

TEST_F(AdoTest, TakesThePathFromTheDataSource)
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

TEST_F(AdoTest, FailsAsTheStoreDoes)
{
    ado::Connection closed;
    EXPECT_EQ(errorOf([&] { closed.Execute(u"SELECT * FROM Items"_s); }), 3420);
    EXPECT_EQ(errorOf([&] { execute(u"SELECT * FROM Nothing"_s); }), 3078);
    EXPECT_EQ(errorOf([&] { execute(u"SELECT * FROM Items ORDER BY Nun"_s); }), 3061);
    EXPECT_EQ(errorOf([&] { execute(u"Items"_s); }), 3131);
    if (isOnServer()) // where nothing is stored that a type does not take
        return;
    sql(u"INSERT INTO Items (Num) VALUES ('many')"_s);
    const auto rows = execute(u"SELECT * FROM Items"_s);
    EXPECT_EQ(errorOf([&] { rows->rows(0, 1); }), 3421);
}

} // namespace
