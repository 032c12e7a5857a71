#include "support/ordinary_user.h"
#include "support/printers.h"
#include "support/temporary_store.h"
#include "tools/store/checker.h"
#include "tools/store/program_run.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using storetooltest::contentsOf;
using storetooltest::Outcome;
using storetooltest::zomrelStore;
using testsupport::TemporaryStore;

namespace {

QStringList filesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

void write(const QString& path, const QByteArray& contents)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(contents), contents.size());
}

/// Reads a single value from a store, bypassing the engine.
QVariant scalar(const QString& path, const QString& sql)
{
    QVariant value;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"look"_s);
        database.setDatabaseName(path);
        EXPECT_TRUE(database.open());
        QSqlQuery query(database);
        EXPECT_TRUE(query.exec(sql) && query.next()) << sql.toStdString();
        value = query.value(0);
    }
    QSqlDatabase::removeDatabase(u"look"_s);
    return value;
}

/// What a restore brings back: everything but the generation.
QString ordersIn(const QString& path)
{
    return scalar(path, u"SELECT group_concat(Number) FROM Orders"_s).toString();
}

QString generationOf(const QString& path)
{
    return scalar(path, u"SELECT generation FROM zomrel_store"_s).toString();
}

class BackupTest : public testing::Test
{
protected:
    QString at(const QString& name) const { return store_.folder() + u'/' + name; }
    Outcome backUp() const { return zomrelStore({u"backup"_s, store_.path(), target_}); }
    Outcome restore() const { return zomrelStore({u"restore"_s, target_, store_.path()}); }

    /// Expects that the folder contains the store and its backup with exactly these bytes, and no
    /// other file.
    void expectUntouched(const QByteArray& store, const QByteArray& backup) const
    {
        EXPECT_EQ(contentsOf(store_.path()), store);
        EXPECT_EQ(contentsOf(target_), backup);
        EXPECT_EQ(filesIn(store_.folder()), (QStringList{u"Aluminium.mdb"_s, u"copy.mdb"_s}));
    }

    TemporaryStore store_;
    QString target_ = at(u"copy.mdb"_s);
};

} // namespace

TEST_F(BackupTest, BackupHasTheStoresContents)
{
    store_.addOrder(1);
    store_.addLine(1, 1);
    const QByteArray before = contentsOf(store_.path());
    const Outcome outcome = backUp();
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.out, QStringList{u"backed up %1 to %2"_s.arg(store_.path(), target_)});
    EXPECT_TRUE(outcome.err.isEmpty());
    expectUntouched(before, before);
}

TEST_F(BackupTest, BackupIsASnapshotWhileAStationWrites)
{
    store_.execute(u"PRAGMA synchronous = OFF"_s);
    store_.execute(u"PRAGMA busy_timeout = 120000"_s); // A backup may take long.
    int order = 0;
    constexpr int mostOrders = 30000; // The largest order number is 32767.
    const auto addRows = [&] {
        store_.addOrder(++order);
        for (int line = 1; line <= 3; ++line)
            store_.addLine(order, line);
    };
    const auto addWholeOrder = [&] {
        store_.execute(u"BEGIN"_s);
        addRows();
        store_.execute(u"COMMIT"_s);
    };
    for (int i = 0; i < 200; ++i)
        addWholeOrder();
    for (int round = 0; round < 3; ++round) {
        const int before = order;
        const QString target = at(u"copy%1.mdb"_s.arg(round));
        // The exclusive lock makes the backup wait, so that it starts to read after the next order
        // has been added.
        store_.execute(u"BEGIN EXCLUSIVE"_s);
        QProcess process;
        process.start(QStringLiteral(ZOMREL_STORE_PROGRAM), {u"backup"_s, store_.path(), target});
        ASSERT_TRUE(process.waitForStarted());
        addRows();
        store_.execute(u"COMMIT"_s);
        while (!process.waitForFinished(0) && order < mostOrders)
            addWholeOrder();
        ASSERT_TRUE(storetooltest::hasEnded(process));
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
        EXPECT_EQ(storetools::checkStore(target), QStringList());
        const int copied = scalar(target, u"SELECT max(Number) FROM Orders"_s).toInt();
        EXPECT_GT(copied, before);
        EXPECT_LE(copied, order);
        EXPECT_EQ(scalar(target, u"SELECT count(*) FROM Orders"_s), copied);
        EXPECT_EQ(scalar(target, u"SELECT count(*) FROM Cuts"_s), 3 * copied);
    }
}

TEST_F(BackupTest, BackupContinuesTheCounters)
{
    store_.addOrder(1);
    store_.addLine(1, 1);
    store_.execute(u"DELETE FROM Cuts"_s);
    ASSERT_EQ(backUp().exitStatus, 0);
    EXPECT_EQ(
        scalar(target_, u"SELECT last_number FROM zomrel_counters WHERE table_name = 'Cuts'"_s), 1);
}

TEST_F(BackupTest, BackupOfAStoreWithoutCountersHasItsRows)
{
    store_.addOrder(1);
    store_.execute(u"DROP TRIGGER \"Cuts.Code.counter\""_s);
    ASSERT_EQ(zomrelStore({u"check"_s, store_.path()}).exitStatus, 1);
    const Outcome outcome = backUp();
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.err, QStringList{u"restore would refuse this backup: "
                                       "Cuts.Code: the counter is missing"_s});
    EXPECT_EQ(scalar(target_, u"SELECT count(*) FROM Orders"_s), 1);
    const Outcome refused = restore();
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_EQ(refused.err, (QStringList{u"Cuts.Code: the counter is missing"_s,
                                        u"zomrel-store: the backup is not sound; nothing was "
                                        "changed"_s}));
    const Outcome forced = zomrelStore({u"restore"_s, u"--force"_s, target_, store_.path()});
    EXPECT_EQ(forced.exitStatus, 0);
    EXPECT_TRUE(forced.out.contains(u"Cuts.Code: the counter is missing"_s));
}

#ifdef Q_OS_UNIX // This test keeps the store open, and Wine keeps the name of a removed file that
                 // is open.
TEST_F(BackupTest, BackupOfAnOlderVersionIsRestoredOverStoresOfBothVersions)
{
    store_.addOrder(1);
    store_.execute(u"DROP TABLE zomrel_store"_s);
    EXPECT_EQ(backUp().err, QStringList());
    for (int older = 0; older < 2; ++older) {
        EXPECT_EQ(restore().exitStatus, 0);
        EXPECT_EQ(ordersIn(store_.path()), u"1"_s);
        EXPECT_FALSE(generationOf(store_.path()).isEmpty());
    }
}
#endif

TEST_F(BackupTest, BackupRefusesAnExistingTarget)
{
    store_.addOrder(1);
    const QByteArray before = contentsOf(store_.path());
    write(target_, "kept");
    const Outcome outcome = backUp();
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err,
              QStringList{u"zomrel-store: Database '%1' already exists."_s.arg(target_)});
    expectUntouched(before, "kept");
}

TEST_F(BackupTest, BackupRefusesALeftoverJournalAtTheTarget)
{
    write(target_ + u"-journal"_s, "left");
    EXPECT_EQ(backUp().exitStatus, 1);
    EXPECT_FALSE(QFile::exists(target_));
}

TEST_F(BackupTest, BackupOfAFaultyStoreIsDiscarded)
{
    store_.addLine(9, 1);
    const Outcome outcome = backUp();
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err.value(0), u"Cuts: 1 lines belong to order 9, which does not exist"_s);
    EXPECT_EQ(filesIn(store_.folder()), QStringList{u"Aluminium.mdb"_s});
}

TEST_F(BackupTest, BackupWithoutAStoreFails)
{
    const Outcome outcome = zomrelStore({u"backup"_s, at(u"absent.mdb"_s), target_});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err.size(), 1);
    EXPECT_EQ(filesIn(store_.folder()), QStringList{u"Aluminium.mdb"_s});
}

TEST_F(BackupTest, BackupToAMissingFolderFails)
{
    target_ = at(u"no such folder/copy.mdb"_s);
    const Outcome outcome = backUp();
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err.size(), 1);
    EXPECT_EQ(filesIn(store_.folder()), QStringList{u"Aluminium.mdb"_s});
}

#ifdef Q_OS_UNIX
/// Windows has no read-only folders.
TEST_F(BackupTest, BackupToAReadOnlyFolderFails)
{
    const QTemporaryDir folder;
    const testsupport::OrdinaryUser user;
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner));
    target_ = folder.filePath(u"copy.mdb"_s);
    EXPECT_EQ(backUp().exitStatus, 1);
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

/// This process keeps the store open, and Wine keeps the name of a removed file that is open.
TEST_F(BackupTest, RestoreKeepsTheReplacedStore)
{
    store_.addOrder(1);
    ASSERT_EQ(backUp().exitStatus, 0);
    const QByteArray good = contentsOf(target_);
    QByteArray replaced;
    for (const QString& kept :
         {u"Aluminium.mdb.before-restore"_s, u"Aluminium.mdb.before-restore.2"_s}) {
        EXPECT_FALSE(QFile::exists(at(kept)));
        write(store_.path(), good);
        const int more = kept.endsWith(u'2') ? 2 : 3;
        {
            TemporaryStore other;
            other.addOrder(more);
            replaced = contentsOf(other.path());
        }
        write(store_.path(), replaced);
        const QString before = generationOf(store_.path());
        const Outcome outcome = restore();
        EXPECT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
        EXPECT_EQ(outcome.out, (QStringList{u"restored %1 from %2"_s.arg(store_.path(), target_),
                                            u"the store before is kept as "_s + at(kept)}));
        EXPECT_EQ(ordersIn(store_.path()), u"1"_s);
        EXPECT_EQ(ordersIn(at(kept)), QString::number(more));
        EXPECT_EQ(contentsOf(target_), good);
        // Stations notice the new store, and the old one if they still have it open.
        EXPECT_NE(generationOf(store_.path()), generationOf(target_));
        EXPECT_NE(generationOf(store_.path()), generationOf(at(kept)));
        EXPECT_NE(generationOf(at(kept)), before);
    }
    EXPECT_EQ(filesIn(store_.folder()).size(), 4);
}
#endif

TEST_F(BackupTest, RestoreWithoutAStoreCreatesIt)
{
    store_.addOrder(1);
    ASSERT_EQ(backUp().exitStatus, 0);
    const QByteArray good = contentsOf(target_);
    const QString place = at(u"new.mdb"_s);
    const Outcome outcome = zomrelStore({u"restore"_s, target_, place});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.out.size(), 1);
    EXPECT_EQ(ordersIn(place), u"1"_s);
    EXPECT_EQ(contentsOf(target_), good);
    EXPECT_NE(generationOf(place), generationOf(target_));
}

TEST_F(BackupTest, RestoreReplacesADamagedStoreAndItsJournal)
{
    store_.addOrder(1);
    ASSERT_EQ(backUp().exitStatus, 0);
    write(store_.path(), "damaged");
    write(store_.path() + u"-journal"_s, "of the damaged one");
    EXPECT_EQ(restore().exitStatus, 0);
    EXPECT_EQ(ordersIn(store_.path()), u"1"_s);
    EXPECT_EQ(contentsOf(at(u"Aluminium.mdb.before-restore"_s)), "damaged");
    EXPECT_EQ(contentsOf(at(u"Aluminium.mdb.before-restore-journal"_s)), "of the damaged one");
    EXPECT_FALSE(QFile::exists(store_.path() + u"-journal"_s));
}

TEST_F(BackupTest, RestoreOfADamagedBackupChangesNothing)
{
    for (int order = 1; order <= 300; ++order)
        store_.addOrder(order);
    ASSERT_EQ(backUp().exitStatus, 0);
    const QByteArray good = contentsOf(target_);
    QByteArray flipped = good;
    // The header of a page in the middle is overwritten.
    flipped.replace(flipped.size() / 2 / 4096 * 4096, 64, QByteArray(64, '\xff'));
    for (const QByteArray& damaged : {flipped, good.left(good.size() / 2), QByteArray(),
                                      QByteArray("no store at all, only text")}) {
        write(target_, damaged);
        const Outcome outcome = restore();
        EXPECT_EQ(outcome.exitStatus, 1);
        EXPECT_TRUE(outcome.out.isEmpty());
        EXPECT_FALSE(outcome.err.isEmpty());
        expectUntouched(good, damaged);
    }
}

TEST_F(BackupTest, RestoreWithoutABackupChangesNothing)
{
    const QByteArray before = contentsOf(store_.path());
    EXPECT_EQ(restore().exitStatus, 1);
    EXPECT_EQ(contentsOf(store_.path()), before);
    EXPECT_EQ(filesIn(store_.folder()), QStringList{u"Aluminium.mdb"_s});
}

TEST_F(BackupTest, RestoreOfALockedStoreChangesNothing)
{
    ASSERT_EQ(backUp().exitStatus, 0);
    const QByteArray good = contentsOf(target_);
    store_.execute(u"BEGIN IMMEDIATE"_s);
    const Outcome outcome = restore();
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err,
              QStringList{u"zomrel-store: Could not update; currently locked by another user."_s});
    store_.execute(u"ROLLBACK"_s);
    expectUntouched(good, good);
}
