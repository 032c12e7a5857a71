#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"
#include "store/schema.h"
#include "support/printers.h"
#include "support/temporary_store.h"
#include "tools/store/builder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testsupport::TemporaryStore;

namespace {

int errorOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const runtime::RunTimeError& error) {
        return error.number();
    }
    return 0;
}

void writeFile(const QString& path, const QByteArray& contents)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(contents);
}

QStringList filesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

class BuilderTest : public testing::Test
{
protected:
    QString path() const { return folder_.filePath(u"Aluminium.mdb"_s); }
    QTemporaryDir folder_;
};

} // namespace

TEST_F(BuilderTest, CreatesEveryTableAsDescribed)
{
    storetools::createStore(path(), {});
    const auto database = dao::DBEngine::instance().OpenDatabase(path());
    ASSERT_EQ(database->tableDefs().Count(), 11);
    for (const store::TableSchema& expected : store::schema()) {
        dao::TableDef table = database->tableDefs()(expected.name);
        ASSERT_EQ(table.Fields().Count(), static_cast<int>(expected.fields.size()));
        for (int i = 0; i < table.Fields().Count(); ++i) {
            const dao::FieldInfo& wanted = expected.fields[static_cast<std::size_t>(i)];
            const dao::FieldDef field = table.Fields()(i);
            EXPECT_EQ(field.Name(), wanted.name);
            EXPECT_EQ(field.Type(), wanted.type) << wanted.name.toStdString();
            EXPECT_EQ(field.Size(), wanted.size) << wanted.name.toStdString();
            EXPECT_EQ(field.info().counter, wanted.counter) << wanted.name.toStdString();
        }
        ASSERT_EQ(table.indexes().Count(), static_cast<int>(expected.indexes.size()));
        for (int i = 0; i < table.indexes().Count(); ++i) {
            const dao::IndexInfo& wanted = expected.indexes[static_cast<std::size_t>(i)];
            EXPECT_EQ(table.indexes()(i).Fields(), wanted.fields);
            EXPECT_EQ(table.indexes()(i).Primary(), wanted.primary);
        }
    }
}

TEST_F(BuilderTest, LeavesNoTemporaryFile)
{
    storetools::createStore(path());
    EXPECT_EQ(filesIn(folder_.path()), QStringList{u"Aluminium.mdb"_s});
}

TEST_F(BuilderTest, RefusesAndKeepsAnExistingFile)
{
    writeFile(path(), "mine");
    EXPECT_EQ(errorOf([&] { storetools::createStore(path()); }), runtime::DatabaseExists);
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "mine");
    EXPECT_EQ(filesIn(folder_.path()), QStringList{u"Aluminium.mdb"_s});
}

TEST_F(BuilderTest, RefusesADanglingSymbolicLink)
{
    ASSERT_TRUE(QFile::link(folder_.filePath(u"absent"_s), path()));
    EXPECT_EQ(errorOf([&] { storetools::createStore(path()); }), runtime::DatabaseExists);
    EXPECT_FALSE(QFile::exists(folder_.filePath(u"absent"_s)));
}

TEST_F(BuilderTest, FailsInAMissingFolder)
{
    const QString lost = folder_.filePath(u"no/such/folder/Aluminium.mdb"_s);
    EXPECT_EQ(errorOf([&] { storetools::createStore(lost); }), runtime::PermissionDenied);
    EXPECT_TRUE(filesIn(folder_.path()).isEmpty());
}

TEST_F(BuilderTest, InvalidContentsLeaveNoFile)
{
    const QTemporaryDir contents;
    const auto build = [&](const QByteArray& series) {
        writeFile(contents.filePath(u"Serials.tsv"_s), series);
        return errorOf([&] { storetools::createStore(path(), contents.path()); });
    };
    EXPECT_EQ(build("Name\tKanaf_W\nA\tnarrow\n"), runtime::DataTypeConversion);
    EXPECT_EQ(build("Name\n" + QByteArray(51, 'x') + "\n"), runtime::FieldTooSmall);
    EXPECT_EQ(build("Name\tWeight\nA\t1\n"), runtime::ItemNotFound);
    EXPECT_TRUE(filesIn(folder_.path()).isEmpty());
}

TEST_F(BuilderTest, InsertsTheRowsOfTheFolder)
{
    const QTemporaryDir contents;
    writeFile(contents.filePath(u"Serials.tsv"_s),
              "Name\tKanaf_W\tNativ_Num\tKanaf_Num\tRem\tSign\n"
              "חלון\t-4.20\t2\t3\t\td2000\n"
              "דלת\t0.05\t1\t1\tהערה\t\n");
    storetools::createStore(path(), contents.path());
    const auto database = dao::DBEngine::instance().OpenDatabase(path());
    const auto series = database->OpenRecordset(u"Serials"_s, dao::dbOpenTable);
    ASSERT_EQ(series->RecordCount(), 2);
    EXPECT_EQ(series->Fields(u"AutoNum"_s).Value().toInt(), 1);
    EXPECT_EQ(series->Fields(u"Name"_s).Value().toString(), u"חלון"_s);
    EXPECT_DOUBLE_EQ(series->Fields(u"Kanaf_W"_s).Value().toDouble(), -4.2);
    EXPECT_FALSE(series->Fields(u"Rem"_s).Value().isValid());
    EXPECT_FALSE(series->Fields(u"Kanaf_H"_s).Value().isValid());
    series->MoveNext();
    EXPECT_EQ(series->Fields(u"AutoNum"_s).Value().toInt(), 2);
    EXPECT_EQ(series->Fields(u"Rem"_s).Value().toString(), u"הערה"_s);
    EXPECT_FALSE(series->Fields(u"Sign"_s).Value().isValid());
    EXPECT_EQ(database->OpenRecordset(u"Orders"_s, dao::dbOpenTable)->RecordCount(), 0);
}

// The delivered store. --------------------------------------------------------------------------

class DeliveredStoreTest : public testing::Test
{
protected:
    int count(const QString& what) { return store_.scalar(u"SELECT count"_s + what).toInt(); }

    TemporaryStore store_{TemporaryStore::Contents::Delivered};
};

TEST_F(DeliveredStoreTest, SeriesCanBeUsedForComputing)
{
    EXPECT_GE(count(u"(*) FROM Serials"_s), 12);
    EXPECT_GE(count(u"(*) FROM Serials WHERE Sign = 'd2000'"_s), 2);
    EXPECT_EQ(store_.scalar(u"SELECT min(AutoNum) FROM Serials"_s).toInt(), 1);
    for (const QString& field : store::deductionFields())
        EXPECT_EQ(count(u"(*) FROM Serials WHERE %1 IS NULL"_s.arg(field)), 0);
    EXPECT_EQ(count(u"(*) FROM Serials WHERE Nativ_Num NOT BETWEEN 1 AND 4"_s), 0);
    EXPECT_EQ(count(u"(*) FROM Serials WHERE Kanaf_Num NOT BETWEEN 1 AND 6"_s), 0);
    EXPECT_EQ(count(u"(*) FROM Serials WHERE Name IS NULL OR Name = ''"_s), 0);
}

TEST_F(DeliveredStoreTest, HasKindsAndColorsForEachPart)
{
    for (const store::PartLists& part : store::partLists()) {
        EXPECT_GE(count(u"(DISTINCT Name) FROM %1"_s.arg(part.kindTable)), 6);
        EXPECT_GE(count(u"(DISTINCT Name) FROM %1"_s.arg(part.colorTable)), 8);
    }
}

TEST_F(DeliveredStoreTest, HasNoOrders)
{
    EXPECT_EQ(count(u"(*) FROM Orders"_s), 0);
    EXPECT_EQ(count(u"(*) FROM Cuts"_s), 0);
}
