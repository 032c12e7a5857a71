#include "platform/dao/fixture.h"
#include "platform/dao/table_rows.h"

#include <limits>

using namespace daotest;

namespace {

const QString inOrder = u"SELECT * FROM Orders Order by Number"_s;

/// Provides a table whose rows were added in descending order of their keys, so that a row id
/// cannot be derived from its key.
class RowListTest : public DaoTest
{
protected:
    void SetUp() override
    {
        DaoTest::SetUp();
        sql(u"CREATE TABLE Orders (Number LONG PRIMARY KEY, Name TEXT(20))"_s);
    }

    void add(const QVariant& number) { sql(u"INSERT INTO Orders VALUES (?, 'n')"_s, {number}); }
    void addDown(int last, int first)
    {
        sql(u"BEGIN"_s);
        for (int number = last; number >= first; --number)
            add(number);
        sql(u"COMMIT"_s);
    }

    static QVariantList rest(dao::Recordset& rows)
    {
        QVariantList values;
        for (; !rows.isEof(); rows.MoveNext())
            values.append(rows.Fields(u"Number"_s).Value());
        return values;
    }
};

TEST_F(RowListTest, keysWithoutGaps_giveAllRowsInOrderFromBothEnds)
{
    addDown(150, 1);
    const auto rows = dynaset(inOrder);
    EXPECT_EQ(rows->RecordCount(), 1);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 150);
    for (int number = 150; number >= 1; --number, rows->MovePrevious())
        ASSERT_EQ(rows->Fields(u"Number"_s).Value(), number);
    EXPECT_TRUE(rows->isBof());
}

TEST_F(RowListTest, keysWithoutGaps_areRepresentedByTheirEnds)
{
    addDown(150, 11);
    const auto database = open();
    dao::Session& driver = database->session();
    const dao::TableRows rows(driver, driver.table(u"Orders"_s).value());
    const auto keys = rows.keyRun(driver, 0);
    ASSERT_TRUE(keys) << "otherwise every row id is read at opening";
    EXPECT_EQ(keys->first, 11);
    EXPECT_EQ(keys->count, 140U);
    sql(u"DELETE FROM Orders WHERE Number = 50"_s);
    EXPECT_FALSE(rows.keyRun(driver, 0));
}

TEST_F(RowListTest, rowAddedByOthersLater_isNotInTheList)
{
    addDown(3, 1);
    const auto rows = dynaset(inOrder);
    add(4);
    add(0);
    EXPECT_EQ(rest(*rows), (QVariantList{1, 2, 3}));
    EXPECT_EQ(rows->RecordCount(), 3);
    rows->Requery();
    EXPECT_EQ(rest(*rows), (QVariantList{0, 1, 2, 3, 4}));
}

TEST_F(RowListTest, rowDeletedBeforeItIsRead_keepsItsPosition)
{
    addDown(100, 1);
    const auto rows = dynaset(inOrder);
    sql(u"DELETE FROM Orders WHERE Number = 99"_s);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 100);
    rows->MovePrevious();
    EXPECT_FALSE(rows->hasCurrent());
    EXPECT_EQ(errorOf([&] { rows->Fields(0).Value(); }), 3167);
    rows->MovePrevious();
    EXPECT_EQ(rows->Fields(0).Value(), 98);
}

TEST_F(RowListTest, rowNotReadYet_isFoundByItsKey)
{
    addDown(200, 1);
    const auto rows = dynaset(inOrder);
    const auto key =
        table(u"Orders"_s)->currentKey(); // This row was added first and is the last in order.
    EXPECT_TRUE(rows->moveToKey(key));
    EXPECT_EQ(rows->Fields(0).Value(), 200);
    EXPECT_EQ(rows->RecordCount(), 200);
    EXPECT_EQ(rows->pages()->rowOf(key), 199);
    add(5000);
    const auto later = dynaset(u"SELECT * FROM Orders WHERE Number = 5000"_s)->currentKey();
    EXPECT_FALSE(rows->moveToKey(later));
    EXPECT_FALSE(rows->moveToKey(later.toLongLong() + 1));
}

TEST_F(RowListTest, rowsRemovedAndAddedAmongUnreadOnes_keepTheOrder)
{
    addDown(300, 1);
    const auto rows = dynaset(inOrder);
    const auto pages = rows->pages();
    rows->Move(149);
    rows->Delete();
    rows->AddNew();
    rows->Fields(0).SetValue(1000);
    rows->Update();
    rows->MoveNext();
    EXPECT_EQ(rows->Fields(0).Value(), 151);
    rows->MoveLast();
    EXPECT_EQ(rows->Fields(0).Value(), 1000);
    EXPECT_EQ(rows->RecordCount(), 300);
    rows->MovePrevious();
    EXPECT_EQ(rows->Fields(0).Value(), 300);
    EXPECT_EQ(pages->rowCount(), 300) << "pages change only when they are told to";
    pages->removeRow(149);
    pages->load(149);
    EXPECT_EQ(pages->value(149, 0), 151);
    pages->load(298);
    EXPECT_EQ(pages->value(298, 0), 300);
}

TEST_F(RowListTest, pages_readRowsThatTheRecordsetHasNotReached)
{
    addDown(200, 1);
    const auto rows = dynaset(inOrder);
    const auto pages = rows->pages();
    pages->load(130);
    EXPECT_EQ(pages->value(130, 0), 131);
    EXPECT_EQ(rows->RecordCount(), 1) << "pages do not count as reached";
    EXPECT_TRUE(rows->moveToKey(pages->keyAt(199)));
    EXPECT_EQ(rows->Fields(0).Value(), 200);
}

TEST_F(RowListTest, keysWithGaps_giveAllRows)
{
    for (const int number : {9, 2, 5, -3})
        add(number);
    EXPECT_EQ(rest(*dynaset(inOrder)), (QVariantList{-3, 2, 5, 9}));
}

TEST_F(RowListTest, lowestAndHighestPossibleKeys_giveAllRows)
{
    EMBEDDED_ONLY("a server does not store values of another type");
    add(std::numeric_limits<qlonglong>::max());
    add(1);
    add(std::numeric_limits<qlonglong>::min());
    const auto rows = dynaset(inOrder);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 3);
    rows->MovePrevious();
    EXPECT_EQ(rows->Fields(0).Value(), 1);
}

TEST_F(RowListTest, keyThatIsNullOrNotAWholeNumber_givesAllRows)
{
    EMBEDDED_ONLY("a primary key on a server cannot be Null");
    for (const int number : {4, 1, 2})
        add(number);
    add(QVariant()); // There are four rows, and four numbers from 1 to 4.
    const auto rows = dynaset(inOrder);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 4);
    rows->MoveFirst();
    EXPECT_TRUE(rows->Fields(0).Value().isNull());
    rows->MoveNext();
    EXPECT_EQ(rest(*rows), (QVariantList{1, 2, 4}));

    sql(u"UPDATE Orders SET Number = 'five' WHERE Number = 4"_s);
    const auto others = dynaset(inOrder);
    others->MoveLast();
    EXPECT_EQ(others->RecordCount(), 4);
}

TEST_F(RowListTest, tableWithoutAPrimaryKey_givesAllRows)
{
    sql(u"CREATE TABLE Plain (Number LONG, Name TEXT(20))"_s);
    for (const int number : {2, 1, 3, 3})
        sql(u"INSERT INTO Plain VALUES (?, 'n')"_s, {number});
    EXPECT_EQ(rest(*dynaset(u"SELECT * FROM Plain ORDER BY Number"_s)), (QVariantList{1, 2, 3, 3}));
}

} // namespace
