#include "platform/dao/fixture.h"

using namespace daotest;

namespace {

class PagesTest : public ItemsTest
{
protected:
    void addMany(int count)
    {
        sql(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
            "INSERT INTO Items (Code, Num, Name) SELECT i, 1000 - i, 'x' FROM n"_s,
            {count});
    }
};

TEST_F(PagesTest, openedPages_knowAllRowsAndReadThemInPages)
{
    addMany(300);
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    const auto pages = rows->pages();
    EXPECT_EQ(pages->rowCount(), 300);
    EXPECT_EQ(rows->RecordCount(), 1) << "a reader counts nothing for the recordset";
    EXPECT_FALSE(pages->isLoaded(150));
    EXPECT_FALSE(pages->value(150, 0).isValid());
    pages->load(150);
    EXPECT_TRUE(pages->isLoaded(150));
    EXPECT_EQ(pages->value(150, 0), 150) << "Num 700 + 150 is Code 300 - 150";
    EXPECT_EQ(pages->value(150, 1), 850);
    EXPECT_FALSE(pages->isLoaded(0));
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 300) << "and moves nothing";
}

TEST_F(PagesTest, rowsThatDoNotExist_areEmpty)
{
    addMany(3);
    const auto pages = dynaset(u"Items"_s)->pages();
    for (int row : {-1, 3, 1000}) {
        pages->load(row);
        pages->forget(row);
        pages->removeRow(row);
        EXPECT_FALSE(pages->isLoaded(row));
        EXPECT_FALSE(pages->value(row, 0).isValid());
        EXPECT_FALSE(pages->keyAt(row).isValid());
    }
    pages->load(0);
    EXPECT_FALSE(pages->value(0, -1).isValid());
    EXPECT_FALSE(pages->value(0, 8).isValid());
    EXPECT_EQ(pages->rowCount(), 3);
}

TEST_F(PagesTest, key_findsItsRow)
{
    addMany(100);
    const auto rows = table(u"Items"_s);
    rows->SetIndex(u"ByNum"_s);
    const auto pages = rows->pages();
    EXPECT_EQ(pages->rowOf(rows->currentKey()), 0) << "in the order of the index";
    rows->MoveLast();
    EXPECT_EQ(pages->rowOf(rows->currentKey()), 99);
    EXPECT_EQ(pages->keyAt(99), rows->currentKey());
    EXPECT_EQ(pages->rowOf(dao::RowKey()), -1);
    EXPECT_EQ(pages->rowOf(dao::RowKey(12345)), -1);
}

TEST_F(PagesTest, rowsAddedAndRemoved_changeThePages)
{
    addMany(70);
    const auto rows = dynaset(u"Items"_s);
    const auto pages = rows->pages();
    pages->load(0);
    pages->load(69);
    const dao::RowKey last = pages->keyAt(69);
    pages->removeRow(65);
    EXPECT_EQ(pages->rowCount(), 69);
    EXPECT_EQ(pages->rowOf(last), 68);
    EXPECT_TRUE(pages->isLoaded(0));
    EXPECT_FALSE(pages->isLoaded(68));
    add(500, 1);
    pages->appendRow(71);
    EXPECT_EQ(pages->rowCount(), 70);
    pages->load(69);
    EXPECT_EQ(pages->value(69, 0), 500);
    pages->load(68);
    EXPECT_EQ(pages->value(68, 0), 70);
}

TEST_F(PagesTest, forgottenRow_isReadAgain)
{
    addMany(3);
    const auto pages = dynaset(u"Items"_s)->pages();
    pages->load(1);
    sql(u"UPDATE Items SET Num = 5"_s);
    EXPECT_EQ(pages->value(1, 1), 998);
    pages->forget(1);
    EXPECT_FALSE(pages->isLoaded(1));
    EXPECT_EQ(pages->value(0, 1), 999);
    pages->load(1);
    EXPECT_EQ(pages->value(1, 1), 5);
}

TEST_F(PagesTest, deletedRow_hasNoValues)
{
    addMany(3);
    const auto pages = dynaset(u"Items"_s)->pages();
    sql(u"DELETE FROM Items WHERE Code = 2"_s);
    pages->load(1);
    EXPECT_TRUE(pages->isLoaded(1));
    EXPECT_FALSE(pages->value(1, 0).isValid());
    EXPECT_EQ(pages->value(2, 0), 3);
}

TEST_F(PagesTest, storedValueOfAnotherType_isShownAsEmpty)
{
    EMBEDDED_ONLY("a server does not store values of another type");
    sql(u"INSERT INTO Items (Code, Num, Name) VALUES (1, 'many', 'x')"_s);
    const auto pages = dynaset(u"Items"_s)->pages();
    pages->load(0);
    EXPECT_FALSE(pages->value(0, 1).isValid());
    EXPECT_EQ(pages->value(0, 2), u"x"_s);
}

TEST_F(PagesTest, recordsetChanged_pagesKeepTheirRows)
{
    addMany(5);
    const auto rows = dynaset(u"Items"_s);
    const auto pages = rows->pages();
    rows->Delete();
    rows->AddNew();
    rows->Update();
    EXPECT_EQ(pages->rowCount(), 5);
    EXPECT_EQ(pages->keyAt(0), dao::RowKey(1));
    pages->removeRow(0);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 5);
}

TEST_F(PagesTest, lockedStore_loadThrowsAndCanBeRepeated)
{
    addMany(5);
    const auto pages = dynaset(u"Items"_s)->pages();
    sql(u"BEGIN EXCLUSIVE"_s);
    EXPECT_EQ(errorOf([&] { pages->load(2); }), 3260);
    EXPECT_FALSE(pages->isLoaded(2));
    sql(u"ROLLBACK"_s);
    pages->load(2);
    EXPECT_EQ(pages->value(2, 0), 3);
}

TEST_F(PagesTest, values_equalThoseOfFields)
{
    sql(u"INSERT INTO Items VALUES (1, NULL, '', 5, 2.5, '2026-03-01', 1, NULL)"_s);
    const auto pages = dynaset(u"Items"_s)->pages();
    pages->load(0);
    EXPECT_FALSE(pages->value(0, 1).isValid());
    EXPECT_EQ(pages->value(0, 2), u""_s);
    EXPECT_EQ(pages->value(0, 4), 2.5);
    EXPECT_EQ(pages->value(0, 5), QVariant(QDate(2026, 3, 1)));
    EXPECT_EQ(pages->value(0, 6), -1);
}

} // namespace
