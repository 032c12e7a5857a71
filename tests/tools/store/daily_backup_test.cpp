#include "tools/store/daily_backup.h"

#include "platform/runtime/run_time_error.h"
#include "support/printers.h"
#include "support/temporary_store.h"
#include "tools/store/builder.h"
#include "tools/store/program_run.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using storetools::backUpDaily;
using storetools::DailyOutcome;
using storetools::dailyStatus;
using storetools::Place;
using storetooltest::contentsOf;
using storetooltest::Outcome;
using storetooltest::zomrelStore;
using testsupport::TemporaryStore;

namespace {

class DailyBackupTest : public testing::Test
{
protected:
    QString at(const QString& name) const { return folder_.filePath(name); }
    QStringList names() const
    {
        return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    DailyOutcome backUpOn(const QDate& day) const
    {
        return backUpDaily(Place(store_.path()), folder_.path(), day, noProgress);
    }
    void write(const QString& name, const QByteArray& contents) const
    {
        QFile file(at(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(contents), contents.size());
    }
    Outcome runDaily() const
    {
        return zomrelStore({u"backup"_s, u"--daily"_s, store_.path(), folder_.path()});
    }
    Outcome runStatus() const { return zomrelStore({u"backup"_s, u"--status"_s, folder_.path()}); }

    /// Makes a store with another identity and returns its path.
    QString makeOtherStore() const
    {
        storetools::createStore(others_.filePath(u"other.mdb"_s), {});
        return others_.filePath(u"other.mdb"_s);
    }
    static void noProgress(const QString& /*what*/, qint64 /*rows*/) {}

    TemporaryStore store_;
    QTemporaryDir folder_;
    const QTemporaryDir others_;
    const QDate march1_{2026, 3, 1};
};

} // namespace

TEST_F(DailyBackupTest, FirstBackupOfADayIsNamedByItsDateAndHoldsTheStore)
{
    store_.addOrder(1);
    const DailyOutcome outcome = backUpOn(march1_);
    EXPECT_EQ(outcome.path, at(u"zomrel-2026-03-01.mdb"_s));
    EXPECT_FALSE(outcome.wasThere);
    EXPECT_EQ(contentsOf(outcome.path), contentsOf(store_.path()));
}

TEST_F(DailyBackupTest, SecondBackupOfADayChangesNothing)
{
    store_.addOrder(1);
    const QByteArray first = contentsOf(backUpOn(march1_).path);
    store_.addOrder(2);
    const DailyOutcome outcome = backUpOn(march1_);
    EXPECT_TRUE(outcome.wasThere);
    EXPECT_EQ(contentsOf(outcome.path), first);
    EXPECT_EQ(names(), QStringList{u"zomrel-2026-03-01.mdb"_s});
}

TEST_F(DailyBackupTest, ThirtyBackupsAreKeptAndOtherFilesAreLeftAlone)
{
    store_.addOrder(1);
    const QStringList foreign{u"notes.txt"_s, u"zomrel-2020-1-1.mdb"_s, u"zomrel-old.mdb"_s};
    for (const QString& name : foreign)
        write(name, "kept");
    for (int day = 0; day < 32; ++day) {
        const DailyOutcome outcome = backUpOn(march1_.addDays(day));
        EXPECT_EQ(outcome.removed.size(), day < 30 ? 0 : 1) << day;
    }
    QStringList expected = foreign;
    for (int day = 2; day < 32; ++day)
        expected.append(storetools::dailyBackupName(march1_.addDays(day)));
    expected.sort();
    EXPECT_EQ(names(), expected);
}

TEST_F(DailyBackupTest, ClockThatIsSetBackDoesNotRemoveTheNewBackup)
{
    store_.addOrder(1);
    for (int day = 0; day < 30; ++day)
        backUpOn(march1_.addDays(day));
    const DailyOutcome outcome = backUpOn(QDate(2001, 1, 1));
    EXPECT_TRUE(QFile::exists(outcome.path));
    EXPECT_EQ(outcome.removed, QStringList{u"zomrel-2026-03-01.mdb"_s});
}

TEST_F(DailyBackupTest, UserIsToldWhatToDoAboutADamagedBackupOfToday)
{
    store_.addOrder(1);
    // The day may change before the program runs.
    const QDate today = QDate::currentDate();
    for (const QDate& day : {today, today.addDays(1)})
        write(storetools::dailyBackupName(day), "damaged");
    const Outcome outcome = runDaily();
    EXPECT_EQ(outcome.exitStatus, 0);
    ASSERT_EQ(outcome.err.size(), 1) << outcome.err.join(u'\n').toStdString();
    EXPECT_TRUE(outcome.err[0].startsWith(
        u"zomrel-store: today's backup was damaged; it is kept as "_s + folder_.path()));
    EXPECT_EQ(outcome.advice, QStringList{u"zomrel-store: what to do: Check the disk of the "
                                          "backups. Remove the damaged file once the other backups "
                                          "are good."_s});
}

TEST_F(DailyBackupTest, StoreThatIsNotSoundRemovesNoOldBackup)
{
    store_.addOrder(1);
    for (int day = 0; day < 30; ++day)
        backUpOn(march1_.addDays(day));
    const QStringList before = names();
    store_.addLine(9, 1); // There is no order 9.
    EXPECT_FALSE(backUpOn(march1_.addDays(30)).backup.findings.isEmpty());
    EXPECT_EQ(names(), before);
}

TEST_F(DailyBackupTest, DamagedBackupOfTodayIsSetAsideAndReplaced)
{
    store_.addOrder(1);
    write(u"zomrel-2026-03-01.mdb"_s, "damaged");
    const DailyOutcome outcome = backUpOn(march1_);
    EXPECT_FALSE(outcome.wasThere);
    EXPECT_EQ(outcome.setAside, at(u"zomrel-2026-03-01.mdb.damaged"_s));
    EXPECT_EQ(contentsOf(outcome.setAside), "damaged");
    EXPECT_EQ(contentsOf(outcome.path), contentsOf(store_.path()));
}

TEST_F(DailyBackupTest, SecondStoreIsRefusedInTheFolderOfTheFirst)
{
    store_.addOrder(1);
    const QByteArray first = contentsOf(backUpOn(march1_).path);
    const QString other = makeOtherStore();
    for (const int days : {0, 1}) {
        const DailyOutcome outcome =
            backUpDaily(Place(other), folder_.path(), march1_.addDays(days), noProgress);
        EXPECT_EQ(outcome.otherStore, u"zomrel-2026-03-01.mdb"_s) << days;
    }
    EXPECT_EQ(names(), QStringList{u"zomrel-2026-03-01.mdb"_s});
    EXPECT_EQ(contentsOf(at(names().first())), first);
    const Outcome told = zomrelStore({u"backup"_s, u"--daily"_s, other, folder_.path()});
    EXPECT_EQ(told.exitStatus, 1);
    EXPECT_EQ(told.err, QStringList{u"zomrel-store: zomrel-2026-03-01.mdb in this folder is a "
                                    "backup of another store; nothing was backed up"_s});
    EXPECT_EQ(told.advice,
              QStringList{u"zomrel-store: what to do: Give each store a folder of its own."_s});
}

TEST_F(DailyBackupTest, RestoredStoreGoesOnInItsFolder)
{
    store_.addOrder(1);
    EXPECT_EQ(runDaily().exitStatus, 0);
    ASSERT_EQ(names().size(), 1);
    const QString older = at(u"zomrel-2020-01-01.mdb"_s);
    ASSERT_TRUE(QFile::rename(at(names().first()), older));
    EXPECT_EQ(zomrelStore({u"restore"_s, older, store_.path()}).exitStatus, 0);
    EXPECT_EQ(runDaily().exitStatus, 0);
    EXPECT_EQ(names().size(), 2);
}

TEST_F(DailyBackupTest, DamagedAndForeignFilesDoNotCountAsKeptBackups)
{
    store_.addOrder(1);
    write(storetools::dailyBackupName(march1_.addDays(2)), "damaged");
    for (int day = 1; day <= 31; ++day) {
        if (day != 2) {
            EXPECT_EQ(backUpOn(march1_.addDays(day)).removed, QStringList()) << day;
        }
    }
    ASSERT_TRUE(QFile::copy(makeOtherStore(), at(storetools::dailyBackupName(march1_))));
    // 30 good backups, a damaged file and a foreign one are there.
    EXPECT_EQ(names().size(), 32);
    EXPECT_EQ(backUpOn(march1_.addDays(32)).removed,
              QStringList{storetools::dailyBackupName(march1_.addDays(1))});
}

TEST_F(DailyBackupTest, StatusFindsTheNewestGoodBackupBehindADamagedOne)
{
    store_.addOrder(1);
    backUpOn(march1_);
    backUpOn(march1_.addDays(1));
    write(u"zomrel-2026-03-03.mdb"_s, "damaged");
    const storetools::DailyStatus status = dailyStatus(folder_.path());
    ASSERT_TRUE(status.newestGood);
    EXPECT_EQ(status.newestGood->day, march1_.addDays(1));
    EXPECT_EQ(status.damaged, QStringList{u"zomrel-2026-03-03.mdb"_s});
    EXPECT_EQ(status.count, 3);
}

TEST_F(DailyBackupTest, MissingFolderIsNotCreated)
{
    const QString missing = at(u"disk"_s);
    EXPECT_THROW(backUpDaily(Place(store_.path()), missing, march1_, [](const QString&, qint64) {}),
                 runtime::RunTimeError);
    EXPECT_THROW(dailyStatus(missing), runtime::RunTimeError);
    EXPECT_FALSE(QFile::exists(missing));
}

TEST_F(DailyBackupTest, ProgramTellsWhatItDid)
{
    store_.addOrder(1);
    const Outcome none = runStatus();
    EXPECT_EQ(none.exitStatus, 1);
    EXPECT_EQ(none.err,
              QStringList{u"zomrel-store: there is no good backup in '%1'"_s.arg(folder_.path())});
    EXPECT_EQ(
        none.advice,
        QStringList{u"zomrel-store: what to do: Make one with zomrel-store backup --daily."_s});
    const Outcome made = runDaily();
    EXPECT_EQ(made.exitStatus, 0);
    ASSERT_EQ(names().size(), 1);
    const QString name = names().first();
    EXPECT_EQ(made.out, QStringList{u"backed up %1 to %2"_s.arg(store_.path(), at(name))});
    const Outcome again = runDaily();
    EXPECT_EQ(again.exitStatus, 0);
    // The day may change between the two runs.
    if (names().size() == 1) {
        EXPECT_EQ(
            again.out,
            QStringList{u"nothing to do: today's backup %1 is there and good"_s.arg(at(name))});
    }
    const Outcome status = runStatus();
    EXPECT_EQ(status.exitStatus, 0);
    EXPECT_TRUE(status.out.value(0).startsWith(u"newest good backup: "_s));
}

TEST_F(DailyBackupTest, StoreIsByDefaultTheOneInTheCurrentFolder)
{
    store_.addOrder(1);
    const Outcome outcome =
        zomrelStore({u"backup"_s, u"--daily"_s, folder_.path()}, store_.folder());
    EXPECT_EQ(outcome.exitStatus, 0);
    ASSERT_EQ(names().size(), 1);
    EXPECT_EQ(contentsOf(at(names().first())), contentsOf(store_.path()));
}

TEST_F(DailyBackupTest, WrongCallsNameWhatTheOptionTakes)
{
    EXPECT_EQ(zomrelStore({u"backup"_s, u"--daily"_s}).err.value(0),
              u"zomrel-store: backup takes [STORE] FOLDER"_s);
    EXPECT_EQ(zomrelStore({u"backup"_s, u"--status"_s, u"a"_s, u"b"_s}).err.value(0),
              u"zomrel-store: backup takes FOLDER"_s);
    EXPECT_EQ(zomrelStore({u"backup"_s, u"--daily"_s, u"--status"_s, u"a"_s}).err.value(0),
              u"zomrel-store: backup takes either --daily or --status"_s);
    EXPECT_EQ(zomrelStore({u"backup"_s, u"a"_s}).err.value(0),
              u"zomrel-store: backup takes FILE TO"_s);
}

TEST_F(DailyBackupTest, UserWithHebrewGetsHebrewMessages)
{
    store_.addOrder(1);
    const Outcome outcome = storetooltest::zomrelStoreIn(
        u"he_IL.UTF-8"_s, {u"backup"_s, u"--status"_s, folder_.path()});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err,
              QStringList{u"zomrel-store: אין גיבוי תקין בתיקייה '%1'"_s.arg(folder_.path())});
    EXPECT_EQ(outcome.advice,
              QStringList{u"zomrel-store: מה עושים: צור אחד בעזרת zomrel-store backup --daily."_s});
}

TEST_F(DailyBackupTest, UserWithHebrewIsToldWhatToDoAboutAnError)
{
    const Outcome outcome = storetooltest::zomrelStoreIn(
        u"he_IL.UTF-8"_s, {u"backup"_s, u"--daily"_s, store_.path(), at(u"disk"_s)});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err,
              QStringList{u"zomrel-store: התיקייה '%1' אינה קיימת."_s.arg(at(u"disk"_s))});
    EXPECT_EQ(outcome.advice, QStringList{u"zomrel-store: מה עושים: צור אותה, או חבר את הדיסק "
                                          "שלה, ונסה שוב."_s});
}
