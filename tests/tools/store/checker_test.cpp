#include "support/printers.h"
#include "support/temporary_store.h"
#include "tools/store/checker.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class CheckerTest : public testing::Test
{
protected:
    QStringList findings() const { return storetools::checkStore(store_.path()); }

    /// Changes a table's declaration, bypassing the engine. The rows stay unchanged.
    void redeclare(const QString& table, const QString& from, const QString& to)
    {
        store_.execute(u"PRAGMA writable_schema = ON"_s);
        store_.execute(u"UPDATE sqlite_master SET sql = replace(sql, ?, ?) WHERE name = ?"_s,
                       {from, to, table});
        store_.execute(u"PRAGMA writable_schema = OFF"_s);
    }

    /// Replaces the table Orders by one without an index, like the upgrade at program start creates
    /// it.
    void replaceOrders()
    {
        store_.execute(u"DROP TABLE Orders"_s);
        store_.execute(u"CREATE TABLE Orders (Number LONG, Order_Date DATETIME, "
                       "Open_Close BOOLEAN NOT NULL DEFAULT 0, CustomerName TEXT(50), "
                       "CustomerAddress TEXT(50), CustomerTel TEXT(20))"_s);
    }

    testsupport::TemporaryStore store_;
};

} // namespace

TEST_F(CheckerTest, DeliveredStoreHasNoFinding)
{
    const testsupport::TemporaryStore delivered(testsupport::TemporaryStore::Contents::Delivered);
    EXPECT_EQ(storetools::checkStore(delivered.path()), QStringList());
}

TEST_F(CheckerTest, StoreWithOrdersHasNoFinding)
{
    store_.addSeries(u"סדרה"_s, {0, 0, 0, 0, 0, 0, 0, 0}, 1, 1);
    store_.addOrder(1, true);
    store_.addOrder(32767);
    for (int line = 1; line <= 3; ++line)
        store_.addLine(1, line);
    store_.addLine(32767, 1);
    EXPECT_EQ(findings(), QStringList());
}

TEST_F(CheckerTest, StoreOfAnOlderVersionHasNoFinding)
{
    store_.execute(u"DROP TABLE zomrel_store"_s);
    EXPECT_EQ(findings(), QStringList());
    EXPECT_EQ(store_.scalar(u"SELECT count(*) FROM sqlite_master WHERE name = 'zomrel_store'"_s),
              0);
}

TEST_F(CheckerTest, FindsAnIncompleteIdentity)
{
    store_.execute(u"UPDATE zomrel_store SET generation = ''"_s);
    EXPECT_EQ(findings(), QStringList{u"file: the store's identity is incomplete"_s});
}

TEST_F(CheckerTest, FindsAdditionalTablesAndFields)
{
    store_.execute(u"CREATE TABLE Notes (Text TEXT)"_s);
    store_.execute(u"ALTER TABLE Orders ADD COLUMN Paid DOUBLE"_s);
    EXPECT_EQ(findings(), (QStringList{u"Orders.Paid: is no field of the store"_s,
                                       u"Notes: is no table of the store"_s}));
}

TEST_F(CheckerTest, UnopenableFileIsAFinding)
{
    const QString absent = store_.folder() + u"/absent.mdb"_s;
    EXPECT_EQ(storetools::checkStore(absent),
              QStringList{u"file: Could not find file '%1'."_s.arg(absent)});
    EXPECT_FALSE(QFile::exists(absent));

    const QString letter = store_.folder() + u"/letter.mdb"_s;
    QFile file(letter);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(4096, 'x'));
    file.close();
    EXPECT_EQ(storetools::checkStore(letter),
              QStringList{u"file: Unrecognized database format '%1'."_s.arg(letter)});
}

TEST_F(CheckerTest, EngineErrorsAreFindings)
{
    store_.addOrder(1);
    store_.addLine(1, 1);
    redeclare(u"Cuts.Order_Num"_s, u"(\"Order_Num\")"_s, u"(\"NUM\")"_s);
    store_.execute(u"UPDATE Cuts SET NUM = 2"_s);
    const QStringList all = findings();
    ASSERT_FALSE(all.isEmpty());
    EXPECT_TRUE(all.first().startsWith(u"file: "_s)) << qPrintable(all.join(u'\n'));
    EXPECT_TRUE(all.first().contains(u"Cuts.Order_Num"_s)) << qPrintable(all.join(u'\n'));
}

// The tables. ---------------------------------------------------------------------------------

TEST_F(CheckerTest, FindsAMissingTable)
{
    store_.execute(u"DROP TABLE GlassColor"_s);
    EXPECT_EQ(findings(), QStringList{u"GlassColor: the table is missing"_s});
}

TEST_F(CheckerTest, TableNameIsCaseSensitive)
{
    store_.execute(u"ALTER TABLE Orders RENAME TO Other"_s);
    store_.execute(u"ALTER TABLE Other RENAME TO orders"_s);
    EXPECT_EQ(findings(), (QStringList{u"Orders: the table is missing"_s,
                                       u"orders: is no table of the store"_s}));
}

TEST_F(CheckerTest, FindsAMissingField)
{
    store_.execute(u"ALTER TABLE Orders DROP COLUMN CustomerTel"_s);
    EXPECT_EQ(findings(), QStringList{u"Orders.CustomerTel: the field is missing"_s});
}

TEST_F(CheckerTest, FindsWrongTypesAndSizes)
{
    redeclare(u"Cuts"_s, u"\"MyWidth\" DOUBLE"_s, u"\"MyWidth\" LONG"_s);
    redeclare(u"Cuts"_s, u"\"Kind\" TEXT(30)"_s, u"\"Kind\" TEXT(10)"_s);
    redeclare(u"Cuts"_s, u"\"NUM\" LONG"_s, u"\"NUM\" INTEGER"_s);
    redeclare(u"Orders"_s, u"\"Order_Date\" DATETIME"_s, u"\"Order_Date\" BOOLEAN"_s);
    redeclare(u"Serials"_s, u"\"Rem\" TEXT(50)"_s, u"\"Rem\" TEXT"_s);
    redeclare(u"KanafKind"_s, u"\"Code\" COUNTER"_s, u"\"Code\" LONG"_s);
    EXPECT_EQ(findings(), (QStringList{u"Orders.Order_Date: is BOOLEAN and should be DATETIME"_s,
                                       u"Cuts.MyWidth: is LONG and should be DOUBLE"_s,
                                       u"Cuts.Kind: is TEXT(10) and should be TEXT(30)"_s,
                                       u"Cuts.NUM: is INTEGER and should be LONG"_s,
                                       u"Serials.Rem: is TEXT and should be TEXT(50)"_s,
                                       u"KanafKind.Code: is LONG and should be COUNTER"_s,
                                       u"file: the trigger 'KanafKind.Code.counter' of KanafKind "
                                       "is not as the program makes it"_s,
                                       u"file: the trigger 'KanafKind.Code.counter_update' of "
                                       "KanafKind is not as the program makes it"_s}));
}

TEST_F(CheckerTest, FindsLineFieldsAtAWrongPosition)
{
    redeclare(u"Cuts"_s, u"\"U_Cut\""_s, u"\"U_X\""_s);
    redeclare(u"Cuts"_s, u"\"U_Vasa\""_s, u"\"U_Cut\""_s);
    redeclare(u"Cuts"_s, u"\"U_X\""_s, u"\"U_Vasa\""_s);
    EXPECT_EQ(findings(),
              (QStringList{u"Cuts.U_Cut: stands at ordinal 29 and should stand at 28"_s,
                           u"Cuts.U_Vasa: stands at ordinal 28 and should stand at 29"_s}));
}

TEST_F(CheckerTest, FieldsAccessedByNameMayBeElsewhere)
{
    redeclare(u"Cuts"_s, u"\"NUM\" LONG, \"Sign\" TEXT(10)"_s,
              u"\"Sign\" TEXT(10), \"NUM\" LONG"_s);
    EXPECT_EQ(findings(), QStringList());
}

const QString notUnique = u"Orders: the index 'ByNumber' on Number has to be the primary key"_s;

TEST_F(CheckerTest, FindsAMissingFirstIndex)
{
    replaceOrders();
    EXPECT_EQ(findings(), QStringList{u"Orders: the first index is not on Number"_s});
    store_.execute(u"CREATE INDEX ByDate ON Orders (Order_Date)"_s);
    store_.execute(u"CREATE INDEX ByNumber ON Orders (Number)"_s);
    EXPECT_EQ(findings(),
              (QStringList{u"Orders: the first index is not on Number"_s,
                           u"Orders: the index 'ByDate' is not the program's"_s, notUnique}));
    store_.execute(u"DROP INDEX ByDate"_s);
    EXPECT_EQ(findings(), QStringList{notUnique});
}

TEST_F(CheckerTest, FindsSeriesWithAnotherFirstIndex)
{
    const QString declaration =
        store_.scalar(u"SELECT sql FROM sqlite_master WHERE name = 'Serials'"_s).toString();
    store_.execute(u"DROP TABLE Serials"_s);
    store_.execute(
        QString(declaration).replace(u"PRIMARY KEY (\"AutoNum\")"_s, u"PRIMARY KEY (\"Name\")"_s));
    EXPECT_EQ(findings(), (QStringList{u"Serials: the first index is not on AutoNum"_s,
                                       u"Serials: the index 'PrimaryKey' is not the program's"_s,
                                       u"Serials.AutoNum: the counter is missing"_s}));
}

TEST_F(CheckerTest, FindsAMissingOrderIndexOfLines)
{
    store_.execute(u"DROP INDEX \"Cuts.Order_Num\""_s);
    EXPECT_EQ(findings(), QStringList{u"Cuts: there is no index on Order_Num"_s});
}

// The rows. -----------------------------------------------------------------------------------

TEST_F(CheckerTest, FindsUnreadableValues)
{
    store_.addOrder(4);
    store_.addOrder(5);
    store_.execute(u"UPDATE Orders SET Order_Date = 'yesterday' WHERE Number = 5"_s);
    store_.addLine(4, 1);
    store_.execute(u"UPDATE Cuts SET MyWidth = 'wide', NUM = 3000000000"_s);
    EXPECT_EQ(findings(), (QStringList{u"Orders, Number 5: Order_Date cannot be read"_s,
                                       u"Cuts, Code 1: MyWidth cannot be read"_s,
                                       u"Cuts, Code 1: NUM cannot be read"_s}));
}

TEST_F(CheckerTest, RowWithoutAReadableKeyIsNamedByPosition)
{
    store_.addOrder(4);
    store_.execute(u"INSERT INTO Orders (Number) VALUES ('five')"_s);
    EXPECT_EQ(findings(), (QStringList{u"Orders, row 2: Number cannot be read"_s,
                                       u"Orders, row 2: nothing is stored in Order_Date"_s}));
}

TEST_F(CheckerTest, FindsTextsLongerThanTheirField)
{
    store_.addOrder(1);
    store_.execute(u"UPDATE Orders SET CustomerTel = ?, CustomerName = ?"_s,
                   {QString(21, u'5'), QString(50, u'א')});
    EXPECT_EQ(findings(),
              QStringList{u"Orders, Number 1: CustomerTel has 21 characters and takes 20"_s});
}

TEST_F(CheckerTest, FindsMissingAndDuplicateNumbers)
{
    replaceOrders();
    store_.execute(u"CREATE INDEX ByNumber ON Orders (Number)"_s);
    for (const int number : {7, 3, 7, 7})
        store_.addOrder(number);
    store_.execute(u"INSERT INTO Orders (Order_Date) VALUES ('2026-01-01')"_s);
    EXPECT_EQ(findings(), (QStringList{notUnique, u"Orders, row 5: has no Number"_s,
                                       u"Orders: Number 7 stands in 3 rows"_s}));
}

TEST_F(CheckerTest, FindsNumbersOutsideTheProgramsRange)
{
    store_.addOrder(32768);
    for (const int number : {0, -1, 32767, 32768}) {
        const int added = store_.addSeries(u"x"_s, {0, 0, 0, 0, 0, 0, 0, 0}, 1, 1);
        store_.execute(u"UPDATE Serials SET AutoNum = ? WHERE AutoNum = ?"_s, {number, added});
    }
    EXPECT_EQ(findings(),
              (QStringList{u"Orders, Number 32768: Number has to lie between 1 and 32767"_s,
                           u"Serials, AutoNum 0: AutoNum has to lie between 1 and 32767"_s,
                           u"Serials, AutoNum -1: AutoNum has to lie between 1 and 32767"_s,
                           u"Serials, AutoNum 32768: AutoNum has to lie between 1 and 32767"_s}));
}

TEST_F(CheckerTest, FindsLinesWithoutAnOrder)
{
    store_.addOrder(2);
    store_.addLine(2, 1);
    store_.addLine(9, 1);
    store_.addLine(9, 2);
    store_.addLine(8, 1);
    store_.execute(u"UPDATE Cuts SET Order_Num = NULL WHERE Order_Num = 8"_s);
    EXPECT_EQ(findings(), (QStringList{u"Cuts: 1 lines have no order number"_s,
                                       u"Cuts: 2 lines belong to order 9, which does not exist"_s,
                                       u"Cuts, Code 4: nothing is stored in Order_Num"_s}));
}

TEST_F(CheckerTest, FindsALineThatIsHardlyFilled)
{
    store_.addOrder(1);
    store_.execute(u"INSERT INTO Cuts (Order_Num, NUM) VALUES (1, 0)"_s);
    EXPECT_EQ(findings(),
              (QStringList{u"Cuts, Code 1: NUM has to lie between 1 and 32767"_s,
                           u"Cuts, Code 1: nothing is stored in Name, MyWidth, MYHeight and 24 "
                           "more"_s}));
}

TEST_F(CheckerTest, FindsValuesOfAnotherTypeThatCanBeRead)
{
    store_.addOrder(1);
    store_.addLine(1, 1);
    store_.execute(u"UPDATE Cuts SET Kanaf_Count = 2.5"_s);
    store_.execute(u"UPDATE Orders SET Order_Date = '2026-01-02 10:30:00'"_s);
    EXPECT_EQ(findings(),
              (QStringList{u"Orders, Number 1: Order_Date has a time of day"_s,
                           u"Cuts, Code 1: Kanaf_Count is stored with another type"_s}));
}

// The counters. -------------------------------------------------------------------------------

TEST_F(CheckerTest, FindsAMissingCounter)
{
    store_.execute(u"DROP TRIGGER \"Cuts.Code.counter\""_s);
    store_.execute(u"DROP TRIGGER \"Serials.AutoNum.counter_update\""_s);
    store_.execute(u"DELETE FROM zomrel_counters WHERE table_name = 'GlassKind'"_s);
    EXPECT_EQ(findings(), (QStringList{u"Cuts.Code: the counter is missing"_s,
                                       u"Serials.AutoNum: the counter is missing"_s,
                                       u"GlassKind.Code: the counter is missing"_s}));
}

TEST_F(CheckerTest, FindsAMissingCounterTable)
{
    store_.execute(u"DROP TABLE zomrel_counters"_s);
    const QStringList all = findings();
    EXPECT_EQ(all.size(), 10) << qPrintable(all.join(u'\n'));
    for (const QString& each : all)
        EXPECT_TRUE(each.endsWith(u": the counter is missing"_s)) << qPrintable(each);
}

TEST_F(CheckerTest, FindsALaggingCounter)
{
    store_.addOrder(1);
    for (int line = 1; line <= 3; ++line)
        store_.addLine(1, line);
    store_.execute(u"UPDATE zomrel_counters SET last_number = 2 WHERE table_name = 'Cuts'"_s);
    EXPECT_EQ(findings(),
              QStringList{u"Cuts.Code: the counter stands at 2, below the highest number, 3"_s});
    store_.execute(u"UPDATE zomrel_counters SET last_number = 4 WHERE table_name = 'Cuts'"_s);
    EXPECT_EQ(findings(), QStringList());
}

TEST_F(CheckerTest, FindsAnExhaustedCounter)
{
    store_.execute(u"INSERT INTO KanafColor (Code, Name) VALUES (2147483647, 'last')"_s);
    const QStringList exhausted{u"KanafColor.Code: the counter has no number left"_s};
    EXPECT_EQ(findings(), exhausted);
    store_.execute(u"DELETE FROM KanafColor"_s);
    EXPECT_EQ(findings(), exhausted);
}

TEST_F(CheckerTest, VacuumCausesNoFinding)
{
    const testsupport::TemporaryStore delivered(testsupport::TemporaryStore::Contents::Delivered);
    testsupport::PlainSql(delivered.path()).rows(u"VACUUM"_s);
    EXPECT_EQ(storetools::checkStore(delivered.path()), QStringList());
}
