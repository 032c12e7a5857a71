#include "platform/dao/examination.h"
#include "platform/dao/fixture.h"

#include <limits>

using namespace daotest;

namespace {

constexpr int last = std::numeric_limits<qint32>::max();

class CountersTest : public DaoTest
{
protected:
    void makeLines() const
    {
        const auto database =
            isOnServer() ? open() : dao::DBEngine::instance().Workspaces(0).CreateDatabase(path_);
        dao::TableDef lines = database->CreateTableDef(u"Lines"_s);
        lines.Fields().Append(lines.CreateCounter(u"Code"_s));
        lines.Fields().Append(lines.CreateField(u"Name"_s, dao::dbText, 20));
        lines.indexes().Append(dao::Index({u"PrimaryKey"_s, {u"Code"_s}, true, true}));
        lines.indexes().Append(dao::Index({u"ByName"_s, {u"Name"_s}, false, false}));
        database->tableDefs().Append(lines);
    }

    /// Adds a row with the given number, or with the next one, and returns its number.
    int add(int number = 0) const
    {
        const auto rows = table(u"Lines"_s);
        rows->AddNew();
        if (number != 0)
            rows->Fields(u"Code"_s).SetValue(number);
        rows->Fields(u"Name"_s).SetValue(u"line"_s);
        rows->Update();
        rows->MoveLast();
        return rows->Fields(u"Code"_s).Value().toInt();
    }

    /// Adds three rows and deletes the last one.
    void addThreeAndDeleteTheLast() const
    {
        for (int number = 1; number <= 3; ++number)
            ASSERT_EQ(add(), number);
        const auto rows = table(u"Lines"_s);
        rows->MoveLast();
        rows->Delete();
        dao::DBEngine::instance().Idle();
    }

    void addField() const
    {
        const auto database = open();
        const dao::TableDef lines = database->tableDefs()(u"Lines"_s);
        lines.Fields().Append(lines.CreateField(u"Paid"_s, dao::dbBoolean));
        EXPECT_EQ(table(u"Lines"_s)->FieldCount(), 3);
    }

    /// Recreates the file from the output of the .dump command of SQLite's shell: the tables with
    /// their rows, then indexes and triggers.
    void readDumpIn()
    {
        QStringList statements;
        for (const QVariantList& row :
             sql(u"SELECT name, sql FROM sqlite_master WHERE type = 'table' "
                 "AND name NOT LIKE 'sqlite!_%' ESCAPE '!' ORDER BY rowid"_s)) {
            statements.append(row[1].toString());
            statements += insertions(row[0].toString());
        }
        for (const QVariantList& row : sql(u"SELECT sql FROM sqlite_master WHERE sql IS NOT NULL "
                                           "AND type IN ('index', 'trigger', 'view')"_s))
            statements.append(row[0].toString());
        raw_.reset();
        dao::DBEngine::instance().Idle();
        ASSERT_TRUE(QFile::remove(path_));
        for (const QString& each : statements)
            sql(each);
        raw_.reset();
    }

    QStringList insertions(const QString& name)
    {
        QStringList columns;
        for (const QVariantList& row : sql(u"SELECT name FROM pragma_table_info(?)"_s, {name}))
            columns.append(u"quote(\"%1\")"_s.arg(row[0].toString()));
        QStringList all;
        for (const QVariantList& row :
             sql(u"SELECT %1 FROM \"%2\""_s.arg(columns.join(u" || ',' || "_s), name)))
            all.append(u"INSERT INTO \"%1\" VALUES (%2)"_s.arg(name, row[0].toString()));
        return all;
    }

    dao::ExaminedCounter examined() const
    {
        return dao::examineCounter(*open(), u"Lines"_s, u"Code"_s);
    }
};

TEST_F(CountersTest, VacuumAfterADeletion_nextNumberIsNew)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    makeLines();
    addThreeAndDeleteTheLast();
    sql(u"VACUUM"_s);
    raw_.reset();
    EXPECT_EQ(add(), 4);
    addField();
    EXPECT_EQ(add(), 5);
}

TEST_F(CountersTest, DumpReadInAgainAfterADeletion_nextNumberIsNew)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    makeLines();
    addThreeAndDeleteTheLast();
    readDumpIn();
    EXPECT_EQ(add(), 4);
    addField();
    EXPECT_EQ(add(), 5);
    EXPECT_EQ(table(u"Lines"_s)->RecordCount(), 4);
    const dao::ExaminedCounter counter = examined();
    EXPECT_EQ(counter.mark, 5);
    EXPECT_FALSE(counter.isLagging());
}

TEST_F(CountersTest, AllRowsDeletedAndReopened_nextNumberIsNew)
{
    makeLines();
    addThreeAndDeleteTheLast();
    sql(u"DELETE FROM Lines"_s);
    raw_.reset();
    dao::DBEngine::instance().Idle();
    EXPECT_EQ(add(), 4);
}

TEST_F(CountersTest, NumberAssignedByAnEdit_movesTheCounter)
{
    makeLines();
    add();
    const auto rows = table(u"Lines"_s);
    rows->Edit();
    rows->Fields(u"Code"_s).SetValue(40);
    rows->Update();
    rows->Delete();
    EXPECT_EQ(add(), 41);
}

TEST_F(CountersTest, LowerNumberAssigned_leavesTheCounter)
{
    makeLines();
    EXPECT_EQ(add(9), 9);
    add(4);
    sql(u"DELETE FROM Lines WHERE Code = 9"_s);
    EXPECT_EQ(add(), 10);
}

TEST_F(CountersTest, OtherTextInTheField_countsOn)
{
    EMBEDDED_ONLY("a server does not store values of another type");
    makeLines();
    add(6);
    sql(u"INSERT INTO Lines (Code) VALUES ('seven')"_s);
    raw_.reset();
    add();
    EXPECT_EQ(scalar(u"SELECT max(Code) FROM Lines WHERE typeof(Code) = 'integer'"_s), 7);
}

TEST_F(CountersTest, internalTables_areNotListedButFoundByTheirNames)
{
    makeLines();
    const auto database = open();
    dao::TableDef own = database->CreateTableDef(u"Zomrel_Notes"_s);
    own.Fields().Append(own.CreateField(u"Note"_s, dao::dbText));
    database->tableDefs().Append(own);
    ASSERT_EQ(database->tableDefs().Count(), 1);
    EXPECT_EQ(database->tableDefs()(0).Name(), u"Lines"_s);
    EXPECT_EQ(database->tableDefs()(u"Zomrel_Notes"_s).Fields()(0).Name(), u"Note"_s);
    EXPECT_EQ(table(u"Zomrel_Notes"_s)->RecordCount(), 0);
}

// The last number -------------------------------------------------------------------------------

TEST_F(CountersTest, LastNumberGiven_nextRowIsRefusedAndNothingStored)
{
    makeLines();
    EXPECT_EQ(add(last - 1), last - 1);
    EXPECT_EQ(add(), last);
    const auto rows = table(u"Lines"_s);
    rows->AddNew();
    rows->Fields(u"Name"_s).SetValue(u"one too many"_s);
    try {
        rows->Update();
        ADD_FAILURE() << "no error";
    } catch (const runtime::RunTimeError& error) {
        EXPECT_EQ(error.number(), runtime::Overflow);
        EXPECT_TRUE(error.description().startsWith(u"Overflow ("_s))
            << qPrintable(error.description());
        EXPECT_TRUE(error.description().contains(u"Lines"_s)) << qPrintable(error.description());
        EXPECT_TRUE(error.description().contains(QString::number(last)))
            << qPrintable(error.description());
    }
    EXPECT_EQ(table(u"Lines"_s)->RecordCount(), 2);
    EXPECT_EQ(scalar(u"SELECT max(Code) FROM Lines"_s), last);
    EXPECT_TRUE(examined().isExhausted());
}

TEST_F(CountersTest, LastNumberGivenAndDeleted_staysExhausted)
{
    makeLines();
    add(last);
    sql(u"DELETE FROM Lines"_s);
    raw_.reset();
    EXPECT_EQ(errorOf([&] { add(); }), runtime::Overflow);
    EXPECT_TRUE(table(u"Lines"_s)->isEof());
    EXPECT_EQ(add(5), 5) << "an assigned number is stored anyway";
}

TEST_F(CountersTest, lastNumberInATableWithoutTriggers_nextRowIsRefused)
{
    sql(u"CREATE TABLE Lines (Code COUNTER PRIMARY KEY, Name TEXT(20))"_s);
    raw_.reset();
    EXPECT_EQ(add(), 1);
    EXPECT_EQ(add(last - 1), last - 1);
    EXPECT_EQ(add(), last);
    EXPECT_EQ(errorOf([&] { add(); }), runtime::Overflow);
    EXPECT_EQ(scalar(u"SELECT count(*) FROM Lines"_s), 3);
}

// The examination -------------------------------------------------------------------------------

TEST_F(CountersTest, counterWithTriggers_isExaminedWithItsNumbers)
{
    makeLines();
    EXPECT_EQ(examined().mark, 0);
    EXPECT_EQ(examined().highest, 0);
    addThreeAndDeleteTheLast();
    const dao::ExaminedCounter counter = examined();
    EXPECT_EQ(counter.highest, 2);
    EXPECT_EQ(counter.mark, 3);
    EXPECT_FALSE(counter.isLagging());
    EXPECT_FALSE(counter.isExhausted());
}

TEST_F(CountersTest, tableWithoutTriggers_hasNoMark)
{
    sql(u"CREATE TABLE Lines (Code COUNTER PRIMARY KEY, Name TEXT(20))"_s);
    sql(u"INSERT INTO Lines (Code) VALUES (7)"_s);
    const dao::ExaminedCounter counter = examined();
    EXPECT_EQ(counter.highest, 7);
    EXPECT_FALSE(counter.mark.has_value());
    EXPECT_FALSE(counter.isLagging());
}

} // namespace
