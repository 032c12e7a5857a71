#include "platform/dao/fixture.h"

using namespace daotest;

namespace {

class DynasetTest : public ItemsTest
{
};

TEST_F(DynasetTest, opened_firstRowOfTheQueryIsCurrent)
{
    add(1, 30);
    add(2, 10);
    add(3, 20);
    const auto rows = dynaset(u"SELECT * FROM ITEMS ORDER BY NUM ASC"_s);
    EXPECT_EQ(rest(*rows, u"Code"_s), (QVariantList{2, 3, 1}));
}

TEST_F(DynasetTest, fieldWithAnyName_canBeSortedBy)
{
    const QStringList names{u"Number"_s, u"n"_s, u"rowid"_s, u"listed"_s, u"Order"_s};
    for (const QString& name : names) {
        const QString table = u"By_"_s + name;
        sql(u"CREATE TABLE %1 (\"%2\" LONG, Name TEXT(5))"_s.arg(table, name));
        for (int number : {30, 10, 20})
            sql(u"INSERT INTO %1 VALUES (?, 'x')"_s.arg(table), {number});
        if (name == u"Order"_s) // A keyword cannot be a field name in a query.
            continue;
        const auto rows = dynaset(u"SELECT * FROM %1 ORDER BY %2"_s.arg(table, name));
        EXPECT_EQ(rest(*rows, name), (QVariantList{10, 20, 30})) << qPrintable(name);
    }
    EXPECT_EQ(rest(*dynaset(u"By_Order"_s), u"Order"_s), (QVariantList{30, 10, 20}));
}

TEST_F(DynasetTest, texts_areSortedByCodePoint)
{
    const QStringList names{u"b"_s, u"Z"_s, u"א"_s, u"a"_s,  u"_"_s,  u""_s,
                            u"B"_s, u"é"_s, u"~"_s, u" a"_s, u"10"_s, u"9"_s};
    int code = 0;
    for (const QString& name : names) {
        ++code;
        add(code, code, name);
    }
    sql(u"INSERT INTO Items (Code, Done) VALUES (99, 0)"_s);
    const QVariantList sorted{QVariant(), u""_s,  u" a"_s, u"10"_s, u"9"_s, u"B"_s, u"Z"_s,
                              u"_"_s,     u"a"_s, u"b"_s,  u"~"_s,  u"é"_s, u"א"_s};
    EXPECT_EQ(rest(*dynaset(u"SELECT * FROM Items ORDER BY Name"_s), u"Name"_s), sorted);
    sql(u"CREATE INDEX ByName ON Items (Name)"_s);
    const auto rows = table(u"Items"_s);
    rows->SetIndex(u"ByName"_s);
    EXPECT_EQ(rest(*rows, u"Name"_s), sorted);
    rows->Seek(u"="_s, u"B"_s);
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 7) << "case counts";
    rows->MovePrevious();
    EXPECT_EQ(rows->Fields(u"Name"_s).Value(), u"9"_s);
    rows->Seek(u"="_s, u"É"_s);
    EXPECT_TRUE(rows->NoMatch());
}

TEST_F(DynasetTest, numberInACondition_isComparedWithAFieldOfAnyType)
{
    sql(u"INSERT INTO Items (Code, Num, Name, Amount, Day, Done, Note) "
        "VALUES (1, 5, '5', 5.5, '2026-01-01', -1, '-7')"_s);
    const auto found = [this](const QString& condition) {
        return rest(*dynaset(u"SELECT * FROM Items WHERE "_s + condition), u"Code"_s).size();
    };
    EXPECT_EQ(found(u"Num = 5"_s), 1);
    EXPECT_EQ(found(u"Num = 5.5"_s), 0);
    EXPECT_EQ(found(u"Num = 99999999999"_s), 0);
    EXPECT_EQ(found(u"Name = 5"_s), 1);
    EXPECT_EQ(found(u"Name = 6"_s), 0);
    EXPECT_EQ(found(u"Note = -7"_s), 1);
    EXPECT_EQ(found(u"Amount = 5.5"_s), 1);
    EXPECT_EQ(found(u"Day = 2026"_s), 0);
    EXPECT_EQ(found(u"Done = -1"_s), 1);
    EXPECT_EQ(found(u"Done = 1"_s), 0);
}

TEST_F(DynasetTest, condition_selectsTheRowsThatMeetIt)
{
    add(1, 7);
    add(2, 8);
    add(3, 7);
    add(4, QVariant());
    const auto rows = dynaset(u"SELECT * FROM Items WHERE NUM = 7"_s);
    EXPECT_EQ(rest(*rows, u"Code"_s), (QVariantList{1, 3}));
}

TEST_F(DynasetTest, equalSortValues_areInInsertionOrder)
{
    for (int code : {5, 3, 9, 1})
        add(code, 4);
    add(2, 1);
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    EXPECT_EQ(rest(*rows, u"Code"_s), (QVariantList{2, 5, 3, 9, 1}));
}

TEST_F(DynasetTest, queryWithoutRows_countsZero)
{
    const auto rows = dynaset(u"SELECT * FROM Items"_s);
    EXPECT_EQ(rows->RecordCount(), 0);
    EXPECT_TRUE(rows->isBof());
    EXPECT_TRUE(rows->isEof());
    EXPECT_FALSE(rows->hasCurrent());
}

TEST_F(DynasetTest, moves_countTheRowsReached)
{
    for (int code = 1; code <= 5; ++code)
        add(code, code);
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    EXPECT_EQ(rows->RecordCount(), 1);
    rows->MoveNext();
    rows->MoveNext();
    EXPECT_EQ(rows->RecordCount(), 3);
    rows->MoveFirst();
    EXPECT_EQ(rows->RecordCount(), 3);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 5);
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 5);
}

TEST_F(DynasetTest, moveNextPastTheEnd_countsAllRows)
{
    add(1, 1);
    add(2, 2);
    const auto rows = dynaset(u"Items"_s);
    rows->MoveNext();
    rows->MoveNext();
    EXPECT_TRUE(rows->isEof());
    EXPECT_FALSE(rows->isBof());
    EXPECT_EQ(rows->RecordCount(), 2);
    EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), 3021);
    rows->MovePrevious();
    EXPECT_EQ(rows->Fields(0).Value(), 2);
}

TEST_F(DynasetTest, rowsMarkedAsReached_areCountedWithoutAMove)
{
    for (int code = 1; code <= 5; ++code)
        add(code, code);
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    rows->markReached(3);
    EXPECT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 1);
    rows->markReached(2);
    rows->markReached(-1);
    EXPECT_EQ(rows->RecordCount(), 3) << "what was reached stays reached";
    rows->Delete();
    EXPECT_EQ(rows->RecordCount(), 2);
    rows->markReached(100);
    EXPECT_EQ(rows->RecordCount(), 4) << "not more than there are";
    rows->AddNew();
    rows->Update();
    rows->markReached(100);
    EXPECT_EQ(rows->RecordCount(), 5);
    rows->database()->Close();
    rows->markReached(3); // This call must not throw.
}

TEST_F(DynasetTest, markReachedOnATable_hasNoEffect)
{
    add(1, 1);
    const auto rows = table(u"Items"_s);
    rows->markReached(7);
    EXPECT_EQ(rows->RecordCount(), 1);
    add(2, 2);
    rows->requeryAsFarAsReached();
    EXPECT_EQ(rows->RecordCount(), 2);
}

TEST_F(DynasetTest, requeryAfterSomeRows_countsAsManyAgain)
{
    for (int code = 1; code <= 5; ++code)
        add(code, code);
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    rows->Move(2);
    rows->requeryAsFarAsReached();
    EXPECT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 1);
    rows->AddNew();
    rows->Fields(u"Num"_s).SetValue(6);
    rows->Update();
    rows->requeryAsFarAsReached();
    EXPECT_EQ(rows->RecordCount(), 4) << "the three reached and the one added";
    sql(u"DELETE FROM Items WHERE Num > 2"_s);
    rows->requeryAsFarAsReached();
    EXPECT_EQ(rows->RecordCount(), 2) << "not more than are left";
    rows->MoveLast();
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 2);
    rows->Requery();
    EXPECT_EQ(rows->RecordCount(), 1) << "a plain Requery counts from the start again";
}

TEST_F(DynasetTest, requeryAfterTheEnd_countsAllRowsAgain)
{
    for (int code = 1; code <= 3; ++code)
        add(code, code);
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    rows->MoveLast();
    rows->MoveFirst();
    rows->Delete();
    rows->requeryAsFarAsReached();
    EXPECT_EQ(rows->RecordCount(), 2);
    add(4, 4);
    add(5, 5);
    rows->requeryAsFarAsReached();
    EXPECT_EQ(rows->RecordCount(), 4) << "rows of another station lie before the end, too";
    sql(u"DELETE FROM Items"_s);
    rows->requeryAsFarAsReached();
    EXPECT_EQ(rows->RecordCount(), 0);
    add(6, 6);
    add(7, 7);
    rows->requeryAsFarAsReached();
    EXPECT_EQ(rows->RecordCount(), 1) << "nothing had been read, as after opening";
}

TEST_F(DynasetTest, addedRows_areCountedAndPlacedAtTheEnd)
{
    for (int code : {1, 2, 3})
        add(code, 10 * code);
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    rows->AddNew();
    rows->Fields(u"Num"_s).SetValue(5);
    rows->Update();
    EXPECT_EQ(rows->RecordCount(), 2) << "the row reached at opening and the one added";
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 4);
    EXPECT_EQ(rows->Fields(u"Num"_s).Value(), 5);
}

TEST_F(DynasetTest, addNew_leavesTheCurrentRowCurrent)
{
    add(1, 10);
    const auto rows = dynaset(u"SELECT * FROM Items"_s);
    rows->AddNew();
    rows->Fields(u"Num"_s).SetValue(11);
    EXPECT_EQ(rows->Fields(u"Num"_s).Value(), 11);
    rows->Update();
    EXPECT_EQ(rows->Fields(u"Num"_s).Value(), 10);
}

TEST_F(DynasetTest, firstRowAddedToAnEmptyDynaset_becomesCurrent)
{
    const auto rows = dynaset(u"SELECT * FROM Items"_s);
    rows->AddNew();
    rows->Fields(u"Num"_s).SetValue(11);
    rows->Update();
    EXPECT_EQ(rows->RecordCount(), 1);
    EXPECT_TRUE(rows->hasCurrent());
    EXPECT_EQ(rows->Fields(u"Num"_s).Value(), 11);
}

TEST_F(DynasetTest, rowsDeletedOneAfterAnother_dynasetIsEmpty)
{
    for (int code = 1; code <= 4; ++code)
        add(code, code);
    const auto rows = dynaset(u"SELECT * FROM Items"_s);
    rows->MoveLast();
    rows->MoveFirst();
    const int count = rows->RecordCount();
    ASSERT_EQ(count, 4);
    for (int i = 0; i < count; ++i) {
        rows->Delete();
        EXPECT_EQ(rows->RecordCount(), count - 1 - i);
        EXPECT_EQ(errorOf([&] { rows->Fields(0).Value(); }), 3167);
        rows->MoveNext();
    }
    EXPECT_TRUE(rows->isEof());
    EXPECT_TRUE(rows->isBof());
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Items"_s), 0);
}

TEST_F(DynasetTest, moveFromADeletedRow_goesToItsNeighbour)
{
    for (int code = 1; code <= 4; ++code)
        add(code, code);
    const auto rows = dynaset(u"SELECT * FROM Items"_s);
    rows->Move(1);
    rows->Delete();
    rows->MoveNext();
    EXPECT_EQ(rows->Fields(0).Value(), 3);
    rows->Delete();
    rows->MovePrevious();
    EXPECT_EQ(rows->Fields(0).Value(), 1);
    rows->MoveNext();
    EXPECT_EQ(rows->Fields(0).Value(), 4);
}

TEST_F(DynasetTest, editsRowByRow_succeedWhileOthersRead)
{
    for (int code = 1; code <= 3; ++code)
        add(code, 10 * code);
    const auto other = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    const auto rows = dynaset(u"SELECT * FROM Items ORDER BY Num"_s);
    for (int i = 1; i <= 3; ++i) {
        rows->Edit();
        rows->Fields(u"NUM"_s).SetValue(i);
        rows->Update();
        rows->MoveNext();
    }
    EXPECT_EQ(rest(*other, u"Num"_s), (QVariantList{10, 2, 3})) << "fetched when visited";
}

} // namespace
