#include "reliability/figures.h"
#include "reliability/ledger.h"
#include "reliability/station_process.h"

#include "support/printers.h"
#include "support/temporary_store.h"
#include "tools/store/checker.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;
using namespace reliability;
using testsupport::TemporaryStore;

namespace {

constexpr int patience = 280000; // Milliseconds.

/// Returns how many line numbers occur more than once in an order. Two stations that add lines to
/// the same order at the same moment may choose the same number; the store does not prevent it.
int doubledNumbers(TemporaryStore& store)
{
    return store
        .scalar(u"SELECT count(*) FROM (SELECT 1 FROM Cuts GROUP BY Order_Num, NUM"
                " HAVING count(*) > 1) AS doubled"_s)
        .toInt();
}

class Stations : public testing::Test
{
protected:
    Stations() : store(TemporaryStore::Contents::Delivered)
    {
        addSeriesOfLines(store);
        ledger = std::make_unique<Ledger>(store);
    }

    void tellLedger(StationProcess& station)
    {
        for (const QString& told : station.takeTold())
            ledger->tell(told);
    }

    void finishWork(StationProcess& station)
    {
        EXPECT_EQ(station.exitStatus(patience), 0);
        EXPECT_EQ(station.runTimeBoxes(), QStringList());
        tellLedger(station);
    }

    void expectNothingLost()
    {
        EXPECT_EQ(storetools::checkStore(store.path()), QStringList());
        EXPECT_EQ(ledger->findings(store), QStringList());
    }

    TemporaryStore store;
    std::unique_ptr<Ledger> ledger;
};

TEST_F(Stations, LoseNoLineAndRepeatNoOrderNumber)
{
    constexpr int stationCount = 4;
    const int lines = setting("ZOMREL_STATION_LINES", 250);
    QElapsedTimer clock;
    clock.start();
    std::vector<std::unique_ptr<StationProcess>> stations;
    for (int i = 0; i < stationCount; ++i)
        stations.push_back(std::make_unique<StationProcess>(store.folder(), u"lines"_s,
                                                            QString::number(i + 1), lines));
    for (const auto& station : stations)
        finishWork(*station);
    const double seconds = double(clock.elapsed()) / 1000;

    EXPECT_EQ(ledger->lineCount(), stationCount * lines);
    expectNothingLost();
    writeFigures(
        u"stations"_s,
        {{u"stations at once"_s, QString::number(stationCount)},
         {u"lines of all stations"_s, QString::number(ledger->lineCount())},
         {u"seconds"_s, QString::number(seconds, 'f', 1)},
         {u"orders"_s, store.scalar(u"SELECT count(*) FROM Orders"_s).toString()},
         {u"line numbers given twice in an order"_s, QString::number(doubledNumbers(store))}});
}

TEST_F(Stations, WaitForALockThatIsReleased)
{
    StationProcess station(store.folder(), u"paced"_s, u"1"_s, 1);
    ASSERT_TRUE(station.waitFor(u"ready"_s));
    store.execute(u"BEGIN IMMEDIATE"_s);
    station.go();
    ASSERT_TRUE(station.waitFor(u"? line"_s));
    EXPECT_FALSE(station.waitFor(u"line"_s, 2000));
    store.execute(u"ROLLBACK"_s);
    EXPECT_EQ(station.exitStatus(patience), 0);
    tellLedger(station);
    EXPECT_EQ(ledger->lineCount(), 1);
    expectNothingLost();
}

TEST_F(Stations, EndAfterALockTimeoutAndLoseNothing)
{
    StationProcess station(store.folder(), u"paced"_s, u"1"_s, 2);
    ASSERT_TRUE(station.waitFor(u"ready"_s));
    station.go();
    ASSERT_TRUE(station.waitFor(u"line"_s));
    store.execute(u"BEGIN IMMEDIATE"_s);
    QElapsedTimer clock;
    clock.start();
    station.go();
    EXPECT_EQ(station.exitStatus(patience), 1);
    EXPECT_GE(clock.elapsed(), 5000);
    EXPECT_LT(clock.elapsed(), 30000); // Far longer than the timeout of 5 s.
    ASSERT_EQ(station.runTimeBoxes().size(), 1);
    EXPECT_TRUE(station.runTimeBoxes().first().startsWith(u"Run-time error '3260': "_s));
    store.execute(u"ROLLBACK"_s);
    tellLedger(station);
    expectNothingLost();
    EXPECT_EQ(ledger->lineCount(), 1);
}

} // namespace
