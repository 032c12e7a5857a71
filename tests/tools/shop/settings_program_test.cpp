#include "support/temporary_store.h"
#include "tools/shop/program_run.h"
#include "tools/store/checker.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using shoptooltest::contentsOf;
using shoptooltest::Outcome;
using shoptooltest::zomrelShop;
using testsupport::TemporaryStore;

namespace {

Outcome settings(const TemporaryStore& store, const QString& option, const QString& file)
{
    return zomrelShop({u"settings"_s, option, file, u"--store"_s, store.path()});
}

void write(const QString& path, const QByteArray& contents)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(contents);
}

} // namespace

TEST(SettingsProgramTest, ExportImportExport_GivesTheSameBytes)
{
    TemporaryStore store(TemporaryStore::Contents::Delivered);
    const QTemporaryDir folder;
    const QString first = folder.filePath(u"bars.csv"_s);
    const QString second = folder.filePath(u"again.csv"_s);
    ASSERT_EQ(settings(store, u"--export"_s, first).exitStatus, 0);
    QByteArray file = contentsOf(first);
    ASSERT_TRUE(file.contains(",600,0.5,1,90,60,"));
    file.replace(",600,0.5,1,90,60,", ",650.25,0.4,1.5,45,70,");
    write(first, file);
    ASSERT_EQ(settings(store, u"--import"_s, first).exitStatus, 0);
    ASSERT_EQ(settings(store, u"--export"_s, second).exitStatus, 0);
    EXPECT_EQ(contentsOf(second), file);
    EXPECT_EQ(storetools::checkStore(store.path()), QStringList());
}

TEST(SettingsProgramTest, ImportedSettings_AreUsedByThePlan)
{
    TemporaryStore store;
    store.addOrder(7);
    store.addLine(7, 1);
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"bars.csv"_s);
    ASSERT_EQ(settings(store, u"--export"_s, file).exitStatus, 0);
    QByteArray changed = contentsOf(file);
    changed.replace(",600,0.5,", ",450,0.5,");
    write(file, changed);
    ASSERT_EQ(settings(store, u"--import"_s, file).exitStatus, 0);
    ASSERT_EQ(zomrelShop({u"plan"_s, u"7"_s, u"--store"_s, store.path(), u"--out"_s, folder.path(),
                          u"--documents"_s, u"json"_s})
                  .exitStatus,
              0);
    const QByteArray json = contentsOf(folder.filePath(u"plan.json"_s));
    EXPECT_TRUE(json.contains("\"barLength\":450,"));
    EXPECT_FALSE(json.contains("\"barLength\":600"));
}

TEST(SettingsProgramTest, FileWithBadCells_IsNotImported)
{
    TemporaryStore store(TemporaryStore::Contents::Delivered);
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"bars.csv"_s);
    ASSERT_EQ(settings(store, u"--export"_s, file).exitStatus, 0);
    QByteArray bad = contentsOf(file);
    bad.replace("guide,U,,600,", "guide,V,,600,").replace("slat,שלב,,600,0.5,", "slat,שלב,,-1,x,");
    write(file, bad);
    const QByteArray before = store.contents();
    const Outcome outcome = settings(store, u"--import"_s, file);
    EXPECT_EQ(outcome.exitStatus, 1);
    ASSERT_EQ(outcome.err.size(), 4);
    EXPECT_TRUE(outcome.err[0].endsWith(u"profile, 'V': unknown profile"_s));
    EXPECT_TRUE(outcome.err[1].contains(u"barLength, '-1'"_s));
    EXPECT_TRUE(outcome.err[2].contains(u"kerf, 'x'"_s));
    EXPECT_EQ(outcome.err[3], u"zomrel-shop: nothing was imported"_s);
    EXPECT_EQ(store.contents(), before);
}

TEST(SettingsProgramTest, TableWithAnotherStructure_IsAnError)
{
    TemporaryStore store;
    store.addOrder(7);
    store.execute(u"CREATE TABLE zomrel_bars (Code LONG, Part TEXT(10))"_s);
    const Outcome outcome = zomrelShop({u"pieces"_s, u"7"_s, u"--store"_s, store.path()});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err, QStringList{u"zomrel-shop: The table zomrel_bars does not have the "
                                       "expected structure: field Code."_s});
}

TEST(SettingsProgramTest, InvalidStoredSettings_AreRepairedByAnImport)
{
    TemporaryStore store;
    store.addOrder(7);
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"bars.csv"_s);
    ASSERT_EQ(settings(store, u"--export"_s, file).exitStatus, 0);
    ASSERT_EQ(settings(store, u"--import"_s, file).exitStatus, 0);
    store.execute(u"UPDATE zomrel_bars SET Trim = 300, Kerf = NULL WHERE Part = 'slat'"_s);
    EXPECT_EQ(zomrelShop({u"pieces"_s, u"7"_s, u"--store"_s, store.path()}).exitStatus, 1);
    EXPECT_EQ(settings(store, u"--import"_s, file).exitStatus, 0);
    EXPECT_EQ(zomrelShop({u"pieces"_s, u"7"_s, u"--store"_s, store.path()}).exitStatus, 0);
    EXPECT_EQ(storetools::checkStore(store.path()), QStringList());
}
