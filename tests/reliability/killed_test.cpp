#include "reliability/figures.h"
#include "reliability/ledger.h"
#include "reliability/station_process.h"

#include "store/store_access.h"
#include "support/printers.h"
#include "support/temporary_store.h"
#include "support/throwaway_server.h"
#include "tools/store/checker.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <random>

using namespace Qt::StringLiterals;
using namespace reliability;
using testsupport::TemporaryStore;

namespace {

constexpr int killsPerStore = 20;
constexpr int endlessly = 1000000;

/// A store on which one station after the other is killed.
struct Victim
{
    Victim() : store(TemporaryStore::Contents::Delivered)
    {
        addSeriesOfLines(store);
        ledger = std::make_unique<Ledger>(store);
    }

    bool hasHotJournal() const { return QFileInfo(store.path() + u"-journal"_s).size() > 0; }

    TemporaryStore store;
    std::unique_ptr<Ledger> ledger;
};

class Killed : public testing::Test
{
protected:
    /// Runs a station and kills it at a random moment. One in ten is killed while it starts.
    void killOne(Victim& victim, int seed)
    {
        StationProcess station(victim.store.folder(), u"mixed"_s, QString::number(seed), endlessly);
        std::uniform_int_distribution<int> moment(0, 250);
        if (random_() % 10 != 0) {
            ASSERT_TRUE(station.waitFor(u"ready"_s))
                << qUtf8Printable(station.runTimeBoxes().join(u'\n'));
            ++starts_;
            // On a busy machine most stations would otherwise be killed before their first line.
            if (random_() % 2 == 0) {
                ASSERT_TRUE(station.waitFor(u"? line"_s));
            }
        }
        station.listen(moment(random_));
        if (random_() % 5 == 0)
            awaitJournal(victim);
        EXPECT_TRUE(station.isAtWork()) << qUtf8Printable(station.errors());
        station.kill();
        victim.store.waitUntilLeft();
        EXPECT_EQ(station.runTimeBoxes(), QStringList());
        if (victim.hasHotJournal())
            ++hotJournals_;
        for (const QString& told : station.takeTold())
            victim.ledger->tell(told);
        inAChange_ += victim.ledger->isAnyUnderWay() ? 1 : 0;
    }

    /// Returns when the station is in the middle of a transaction. On a quick disk a transaction is
    /// so short that a kill at a random moment rarely interrupts one. Gives up after one second,
    /// because the station may not be writing.
    static void awaitJournal(const Victim& victim)
    {
        const QDeadlineTimer deadline(std::chrono::seconds(1));
        while (!testsupport::isOnServer() && !victim.hasHotJournal() && !deadline.hasExpired())
            ;
    }

    static void expectNothingLost(Victim& victim)
    {
        EXPECT_EQ(storetools::checkStore(victim.store.path()), QStringList());
        EXPECT_EQ(victim.ledger->findings(victim.store), QStringList());
        EXPECT_TRUE(store::TableExists(victim.store.path(), u"Orders"_s));
    }

    /// Expects that the next station starts and works, and that the earlier rows are still stored.
    void workOnceMore(Victim& victim)
    {
        StationProcess station(victim.store.folder(), u"lines"_s, u"afterwards"_s, 1);
        EXPECT_EQ(station.exitStatus(30000), 0);
        EXPECT_EQ(station.runTimeBoxes(), QStringList());
        for (const QString& told : station.takeTold())
            victim.ledger->tell(told);
        expectNothingLost(victim);
        ++starts_;
    }

    void add(const Victim& victim)
    {
        rows_ += victim.ledger->rowsCompared();
        for (const auto& [kind, times] : victim.ledger->kindsTold().asKeyValueRange())
            changes_[kind] += times;
    }

    /// Expects that the kills covered every kind of change and mostly happened during a change.
    void expectThatMuchWasDone(int kills)
    {
        const int changes = changesAcknowledged();
        EXPECT_GT(changes, 0);
        if (kills >= killsPerStore) {
            EXPECT_GT(inAChange_, kills / 4);
        }
        if (kills >= 5 * killsPerStore && !testsupport::isOnServer()) {
            EXPECT_GT(hotJournals_, 0);
        }
        QStringList kinds;
        if (changes >= 500)
            kinds << u"order"_s << u"line"_s << u"deleted"_s << u"printed"_s << u"closed"_s
                  << u"series"_s << u"name"_s << u"renamed"_s << u"unnamed"_s;
        // These changes are rare.
        if (changes >= 2000)
            kinds << u"emptied"_s << u"seriesdeleted"_s;
        for (const QString& kind : kinds)
            EXPECT_GT(changes_[kind], 0) << qUtf8Printable(kind);
    }

    void writeDown(int seed, int kills) const
    {
        QList<Figure> figures{
            {u"kills"_s, QString::number(kills)},
            {u"kills with a journal left to roll back"_s, QString::number(hotJournals_)},
            {u"starts after a kill or on a new store"_s, QString::number(starts_)},
            {u"kills in the middle of a change"_s, QString::number(inAChange_)},
            {u"changes acknowledged"_s, QString::number(changesAcknowledged())}};
        for (const auto& [kind, times] : changes_.asKeyValueRange())
            figures.append({u"- "_s + kind, QString::number(times)});
        figures.append({u"rows compared"_s, QString::number(rows_)});
        figures.append({u"seed"_s, QString::number(seed)});
        writeFigures(u"killed"_s, figures);
    }

    std::mt19937 random_;

private:
    int changesAcknowledged() const { return std::accumulate(changes_.begin(), changes_.end(), 0); }

    int hotJournals_ = 0;
    int starts_ = 0;
    int rows_ = 0;
    int inAChange_ = 0;
    QMap<QString, int> changes_; ///< Number of changes of each kind.
};

TEST_F(Killed, LosesNothingAndLeavesNoPartialRow)
{
    const int seed = setting("ZOMREL_SEED", int(std::random_device{}() % 1000000));
    const int kills = setting("ZOMREL_KILLS", 200) / (testsupport::isOnServer() ? 4 : 1);
    std::printf("ZOMREL_SEED=%d\n", seed);
    random_.seed(unsigned(seed));
    std::unique_ptr<Victim> victim;
    for (int kill = 0; kill < kills && !HasFailure(); ++kill) {
        SCOPED_TRACE(testing::Message() << "kill " << kill << " of seed " << seed);
        if (kill % killsPerStore == 0)
            victim = std::make_unique<Victim>();
        ASSERT_NO_FATAL_FAILURE(killOne(*victim, seed + kill));
        expectNothingLost(*victim);
        if (kill % killsPerStore == killsPerStore - 1 || kill == kills - 1) {
            workOnceMore(*victim);
            add(*victim);
        }
    }
    writeDown(seed, kills);
    expectThatMuchWasDone(kills);
}

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

/// Creates the store that a power failure leaves during a change: a part of the change in the file,
/// and the journal with the previous contents beside it.
TEST_F(Killed, StartsAfterAnInterruptedChange)
{
    if (testsupport::isOnServer())
        GTEST_SKIP() << "a server has its own journal";
    Victim victim;
    {
        StationProcess station(victim.store.folder(), u"lines"_s, u"before"_s, 20);
        ASSERT_EQ(station.exitStatus(60000), 0);
        for (const QString& told : station.takeTold())
            victim.ledger->tell(told);
    }
    expectNothingLost(victim);
    const QString path = victim.store.path();
    const QString journal = path + u"-journal"_s;
    victim.store.execute(u"PRAGMA cache_size = 1"_s);
    victim.store.execute(u"BEGIN IMMEDIATE"_s);
    victim.store.execute(u"UPDATE Cuts SET MyWidth = 0, Rem = hex(randomblob(400))"_s);
    victim.store.execute(u"DELETE FROM Orders"_s);
    const QByteArray cutOff = contentsOf(path);
    const QByteArray before = contentsOf(journal);
    victim.store.execute(u"ROLLBACK"_s);
    ASSERT_FALSE(before.isEmpty());
    ASSERT_NE(contentsOf(path), cutOff);
    write(path, cutOff);
    write(journal, before);

    workOnceMore(victim);
    EXPECT_FALSE(victim.hasHotJournal());
    EXPECT_EQ(victim.ledger->lineCount(), 21);
}

} // namespace
