#include "platform/dao/fixture.h"

using namespace daotest;

namespace {

class TableRecordsetTest : public ItemsTest
{
};

TEST_F(TableRecordsetTest, withoutAnIndex_rowsAreInTheTablesOwnOrder)
{
    for (int code : {5, 2, 9})
        add(code, 100 - code);
    EXPECT_EQ(rest(*table(u"Items"_s), u"Code"_s), (QVariantList{5, 2, 9}));
}

TEST_F(TableRecordsetTest, withAnIndex_rowsAreInItsOrderBothWays)
{
    add(5, 20);
    add(2, 30);
    add(9, 10);
    const auto rows = table(u"items"_s);
    rows->SetIndex(rows->database()->tableDefs()(u"ITEMS"_s).indexes()(0).Name());
    EXPECT_EQ(rest(*rows, u"Code"_s), (QVariantList{2, 5, 9}));
    rows->SetIndex(u"bynum"_s);
    EXPECT_EQ(rows->Index(), u"ByNum"_s);
    EXPECT_EQ(rest(*rows, u"Code"_s), (QVariantList{9, 5, 2}));
    QVariantList backwards;
    for (rows->MoveLast(); !rows->isBof(); rows->MovePrevious())
        backwards.append(rows->Fields(u"Code"_s).Value());
    EXPECT_EQ(backwards, (QVariantList{2, 5, 9}));
    EXPECT_EQ(errorOf([&] { rows->MovePrevious(); }), 3021);
    rows->MoveNext();
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 9);
}

TEST_F(TableRecordsetTest, equalAndNullIndexValues_areInInsertionOrder)
{
    add(4, 7);
    add(8, QVariant());
    add(1, 7);
    add(6, QVariant());
    add(3, 5);
    add(2, 7);
    const auto rows = table(u"Items"_s);
    rows->SetIndex(u"ByNum"_s);
    EXPECT_EQ(rest(*rows, u"Code"_s), (QVariantList{8, 6, 3, 4, 1, 2}));
    QVariantList backwards;
    for (rows->MoveLast(); !rows->isBof(); rows->MovePrevious())
        backwards.append(rows->Fields(u"Code"_s).Value());
    EXPECT_EQ(backwards, (QVariantList{2, 1, 4, 3, 6, 8}));
}

TEST_F(TableRecordsetTest, indexOfTwoFields_sortsByBoth)
{
    sql(u"CREATE TABLE Pairs (A LONG, B TEXT(5), Id LONG)"_s);
    sql(u"CREATE INDEX Both ON Pairs (A, B)"_s);
    const QList<QVariantList> pairs = {{2, u"b"_s, 1},          {1, u"z"_s, 2}, {2, QVariant(), 3},
                                       {QVariant(), u"m"_s, 4}, {2, u"a"_s, 5}, {2, u"b"_s, 6}};
    for (const QVariantList& each : pairs)
        sql(u"INSERT INTO Pairs VALUES (?, ?, ?)"_s, each);
    const auto rows = table(u"Pairs"_s);
    rows->SetIndex(u"Both"_s);
    EXPECT_EQ(rest(*rows, u"Id"_s), (QVariantList{4, 2, 3, 5, 1, 6}));
    QVariantList backwards;
    for (rows->MoveLast(); !rows->isBof(); rows->MovePrevious())
        backwards.append(rows->Fields(u"Id"_s).Value());
    EXPECT_EQ(backwards, (QVariantList{6, 1, 5, 3, 2, 4}));
}

TEST_F(TableRecordsetTest, rowsOfOtherStations_areCounted)
{
    const auto rows = table(u"Items"_s);
    EXPECT_EQ(rows->RecordCount(), 0);
    EXPECT_EQ(errorOf([&] { rows->MoveFirst(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->MoveLast(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->MovePrevious(); }), 3021);
    add(1, 1);
    add(2, 2);
    EXPECT_EQ(rows->RecordCount(), 2);
    rows->MoveLast();
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 2);
}

TEST_F(TableRecordsetTest, rowAddedByOthersAhead_isReached)
{
    add(1, 10);
    add(2, 30);
    const auto rows = table(u"Items"_s);
    rows->SetIndex(u"ByNum"_s);
    add(3, 20);
    rows->MoveNext();
    EXPECT_EQ(rows->Fields(u"Num"_s).Value(), 20);
    sql(u"DELETE FROM Items WHERE Num = 30"_s);
    rows->MoveNext();
    EXPECT_TRUE(rows->isEof());
}

TEST_F(TableRecordsetTest, currentRowDeletedByOthers_nextMoveContinuesThere)
{
    for (int code : {1, 2, 3})
        add(code, 10 * code);
    const auto rows = table(u"Items"_s);
    rows->SetIndex(u"ByNum"_s);
    rows->MoveNext();
    sql(u"DELETE FROM Items WHERE Code = 2"_s);
    EXPECT_EQ(errorOf([&] { rows->Edit(); }), 3167);
    rows->MoveNext();
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 3);
}

TEST_F(TableRecordsetTest, moveFromADeletedRow_goesToTheNext)
{
    for (int code : {1, 2, 3})
        add(code, 40 - 10 * code);
    const auto rows = table(u"Items"_s);
    rows->SetIndex(u"ByNum"_s);
    rows->MoveNext();
    rows->Delete();
    EXPECT_FALSE(rows->hasCurrent());
    EXPECT_EQ(errorOf([&] { rows->Fields(0).Value(); }), 3167);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3167);
    EXPECT_EQ(rows->RecordCount(), 2);
    rows->MoveNext();
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 1);
}

TEST_F(TableRecordsetTest, indexValueChanged_moveContinuesFromTheNewValue)
{
    for (int code : {1, 2, 3})
        add(code, 10 * code);
    const auto rows = table(u"Items"_s);
    rows->SetIndex(u"ByNum"_s);
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(25);
    rows->Update();
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 1);
    rows->MoveNext();
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 3);
}

TEST_F(TableRecordsetTest, moveByManyRows_stopsAtTheEnds)
{
    for (int code = 1; code <= 9; ++code)
        add(code, code);
    const auto rows = table(u"Items"_s);
    rows->Move(6);
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 7);
    rows->Move(-4);
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 3);
    rows->Move(100);
    EXPECT_TRUE(rows->isEof());
    rows->Move(-2);
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 8);
    rows->Move(-100);
    EXPECT_TRUE(rows->isBof());
}

TEST_F(TableRecordsetTest, seek_findsTheFirstRowOfAKey)
{
    add(1, 7);
    add(2, 5);
    add(3, 5);
    const auto rows = table(u"Items"_s);
    EXPECT_EQ(errorOf([&] { rows->Seek(u"="_s, 5); }), 3019);
    rows->SetIndex(u"ByNum"_s);
    rows->Seek(u"="_s, u" 5 "_s);
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 2);
    rows->MoveNext();
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 3);
    EXPECT_EQ(errorOf([&] { rows->Seek(u">"_s, 5); }), 3251);
}

TEST_F(TableRecordsetTest, seekWithoutAMatch_leavesNoCurrentRow)
{
    add(1, 7);
    const auto rows = table(u"Items"_s);
    rows->SetIndex(u"ByNum"_s);
    rows->Seek(u"="_s, 6);
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_FALSE(rows->hasCurrent());
    EXPECT_FALSE(rows->currentKey().isValid());
    EXPECT_EQ(errorOf([&] { rows->Fields(0).Value(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->MoveNext(); }), 3021);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3021);
    rows->MoveFirst();
    EXPECT_EQ(rows->Fields(u"Code"_s).Value(), 1);
    EXPECT_TRUE(rows->NoMatch()) << "until the next Seek";
    rows->Seek(u"="_s, 7);
    EXPECT_FALSE(rows->NoMatch());
}

TEST_F(TableRecordsetTest, unknownIndexName_isRefused)
{
    const auto rows = table(u"Items"_s);
    EXPECT_EQ(errorOf([&] { rows->SetIndex(u"Num"_s); }), 3015);
    EXPECT_EQ(rows->Index(), QString());
    EXPECT_EQ(errorOf([&] { dynaset(u"Items"_s)->SetIndex(u"ByNum"_s); }), 3251);
    EXPECT_EQ(errorOf([&] { dynaset(u"Items"_s)->Index(); }), 3251);
    EXPECT_EQ(errorOf([&] { dynaset(u"Items"_s)->Seek(u"="_s, 1); }), 3251);
}

TEST_F(TableRecordsetTest, addNew_leavesTheCurrentRowCurrent)
{
    add(1, 10);
    const auto rows = table(u"Items"_s);
    rows->SetIndex(u"PrimaryKey"_s);
    rows->MoveLast();
    rows->AddNew();
    rows->Fields(u"Num"_s).SetValue(11);
    rows->Update();
    EXPECT_EQ(rows->Fields(u"Num"_s).Value(), 10);
    EXPECT_EQ(rows->RecordCount(), 2);
}

TEST_F(TableRecordsetTest, firstRowAddedToAnEmptyTable_becomesCurrent)
{
    const auto rows = table(u"Items"_s);
    rows->SetIndex(u"PrimaryKey"_s);
    rows->AddNew();
    rows->Fields(u"Day"_s).SetValue(QDate(2026, 3, 1));
    rows->Update();
    EXPECT_EQ(rows->Fields(u"Day"_s).Value(), QDate(2026, 3, 1));
}

} // namespace
