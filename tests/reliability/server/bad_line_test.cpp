// Tests of a network connection between station and server that delays, breaks or stalls.

#include "reliability/figures.h"
#include "reliability/server/server_store.h"

#include "support/printers.h"
#include "support/server_proxy.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;
using namespace reliability;
using testsupport::ServerProxy;

namespace {

constexpr int patience = 60000; // Milliseconds.
// Milliseconds from the failure of the connection to the end of the station, on a busy machine too.
// Without its own timeout the station would wait for the network's timeout, which is many minutes.
constexpr int longestWait = 30000;
constexpr int glance = 20; // Milliseconds.
constexpr int lines = 4;
/// Approximate number of data chunks of a station's start and its lines.
constexpr int chunksOfTheWork = 120;

/// A station with a proxy connection of its own to the server.
struct Remote
{
    Remote(ServerStore& store, const QString& itsName, int count)
        : name(itsName), proxy(store.server().port()), link(store.linkByPort(proxy.port())),
          station(link.folder(), u"paced"_s, name, count)
    {
    }

    void askForLines(int count) { station.go(QByteArray("line\n").repeated(count - 1) + "line"); }

    QString name;
    ServerProxy proxy;
    LinkFolder link;
    StationProcess station;
};

class BadLine : public testing::Test
{
protected:
    /// Expects that the station has ended with the error box of a lost or unreachable server.
    void expectStatedEnd(Remote& remote, bool atStart = false)
    {
        EXPECT_EQ(remote.station.exitStatus(patience), 1)
            << qUtf8Printable(remote.station.errors());
        const QStringList boxes = remote.station.runTimeBoxes();
        EXPECT_EQ(boxes.size(), 1);
        EXPECT_TRUE(tellsOfTheServer(boxes.value(0)) ||
                    (atStart && tellsOfACutUpgrade(boxes.value(0))))
            << qUtf8Printable(boxes.join(u'\n'));
        store_.tell(remote.station, remote.name);
    }

    /// The errors that said what became of a new row.
    struct Told
    {
        int stored = 0;
        int notStored = 0;
    };

    /// Waits for the end of the station and compares what it was told with the lines in the store.
    void compareWithStore(Remote& remote, Told& told)
    {
        const int status = remote.station.exitStatus(patience);
        const QStringList reports = remote.station.takeTold();
        int acknowledged = 0;
        for (const QString& each : reports) {
            store_.ledger().tell(each, remote.name);
            acknowledged += each.startsWith(u"line "_s) ? 1 : 0;
        }
        const QString box = remote.station.runTimeBoxes().value(0);
        EXPECT_EQ(status, box.isEmpty() ? 0 : 1) << qUtf8Printable(remote.station.errors());
        EXPECT_TRUE(box.isEmpty() || tellsOfTheServer(box)) << qUtf8Printable(box);
        const bool isStored = box.contains(u"The new row is stored."_s);
        const bool isNotStored = box.contains(u"The new row is not stored."_s);
        told.stored += isStored ? 1 : 0;
        told.notStored += isNotStored ? 1 : 0;
        if (!isStored && !isNotStored)
            return;
        const bool isLine = reports.value(reports.size() - 1).startsWith(u"? line"_s);
        EXPECT_EQ(store_.count(u"SELECT count(*) FROM Cuts WHERE Mashof_Kind LIKE '%1-%'"_s.arg(
                      remote.name)),
                  acknowledged + (isStored && isLine ? 1 : 0))
            << qUtf8Printable(box);
    }

    ServerStore store_;
    std::mt19937 random_;
};

TEST_F(BadLine, DelayedConnectionCompletesTheWork)
{
    Remote remote(store_, u"delayed"_s, lines);
    ASSERT_TRUE(remote.station.waitFor(u"ready"_s));
    remote.proxy.delay(std::chrono::milliseconds(30));
    remote.askForLines(lines);
    EXPECT_EQ(remote.station.exitStatus(patience), 0);
    EXPECT_EQ(remote.station.runTimeBoxes(), QStringList());
    store_.tell(remote.station, remote.name);
    EXPECT_EQ(store_.ledger().lineCount(), lines);
    EXPECT_EQ(store_.findings(), QStringList());
}

TEST_F(BadLine, CutConnectionLosesNothing)
{
    const unsigned seed = printedSeed();
    random_.seed(seed);
    const int cuts = setting("ZOMREL_LINE_FAULTS", 20);
    std::uniform_int_distribution<int> moment(0, chunksOfTheWork);
    int ended = 0;
    for (int cut = 0; cut < cuts && !HasFailure(); ++cut) {
        SCOPED_TRACE(testing::Message() << "cut " << cut << " of seed " << seed);
        Remote remote(store_, QString::number(cut), lines);
        const bool atStart = cut % 5 == 0;
        if (!atStart) {
            ASSERT_TRUE(remote.station.waitFor(u"ready"_s));
        }
        remote.proxy.cutAfter(moment(random_));
        remote.askForLines(lines);
        // A station without an unconfirmed change continues on a new connection.
        if (remote.station.exitStatus(patience) == 0) {
            EXPECT_EQ(remote.station.runTimeBoxes(), QStringList());
            store_.tell(remote.station, remote.name);
        } else {
            expectStatedEnd(remote, atStart);
            ++ended;
        }
        EXPECT_EQ(store_.findings(), QStringList());
    }
    writeFigures(u"line cut"_s,
                 {{u"cuts"_s, QString::number(cuts)},
                  {u"stations that went on"_s, QString::number(cuts - ended)},
                  {u"stations that ended with an error box"_s, QString::number(ended)},
                  {u"lines acknowledged"_s, QString::number(store_.ledger().lineCount())},
                  {u"seed"_s, QString::number(seed)}},
                 Engine::Server);
}

/// A connection that fails in one direction only: the server gets no more requests, or the station
/// gets no more answers. In one of four cases, neither side notices the end of the connection.
TEST_F(BadLine, ConnectionCutInOneDirectionLosesAndRepeatsNothing)
{
    const unsigned seed = printedSeed();
    random_.seed(seed);
    const int cuts = setting("ZOMREL_LINE_FAULTS", 20);
    std::uniform_int_distribution<int> moment(0, chunksOfTheWork / 2);
    Told told;
    for (int cut = 0; cut < cuts && !HasFailure(); ++cut) {
        SCOPED_TRACE(testing::Message() << "cut " << cut << " of seed " << seed);
        Remote remote(store_, u"half%1"_s.arg(cut), lines);
        ASSERT_TRUE(remote.station.waitFor(u"ready"_s));
        const auto direction =
            cut % 2 == 0 ? ServerProxy::Direction::ToServer : ServerProxy::Direction::ToStation;
        if (cut % 4 == 3)
            remote.proxy.swallowAfter(direction, moment(random_));
        else
            remote.proxy.cutAfter(direction, moment(random_));
        remote.askForLines(lines);
        compareWithStore(remote, told);
        EXPECT_EQ(store_.findings(), QStringList());
    }
    writeFigures(u"line cut in one direction"_s,
                 {{u"cuts"_s, QString::number(cuts)},
                  {u"errors that said: stored"_s, QString::number(told.stored)},
                  {u"errors that said: not stored"_s, QString::number(told.notStored)},
                  {u"lines acknowledged"_s, QString::number(store_.ledger().lineCount())},
                  {u"seed"_s, QString::number(seed)}},
                 Engine::Server);
}

TEST_F(BadLine, StalledConnectionEndsWithinItsTimeout)
{
    const unsigned seed = printedSeed();
    random_.seed(seed);
    constexpr int stationCount = 6;
    /// A lower bound of the data chunks that one line takes.
    constexpr int stepsOfALine = 10;
    std::uniform_int_distribution<int> moment(0, lines * stepsOfALine);
    std::vector<std::unique_ptr<Remote>> remotes;
    for (int i = 0; i < stationCount; ++i) {
        remotes.push_back(std::make_unique<Remote>(store_, u"stalled%1"_s.arg(i + 1), 1000));
        ASSERT_TRUE(remotes.back()->station.waitFor(u"ready"_s));
    }
    for (const auto& each : remotes) {
        each->proxy.stallAfter(moment(random_));
        each->askForLines(100);
    }
    for (const auto& each : remotes) {
        while (!each->proxy.isStalled())
            each->station.listen(glance);
    }
    QElapsedTimer clock;
    clock.start();
    for (const auto& each : remotes)
        expectStatedEnd(*each);
    EXPECT_LT(clock.elapsed(), longestWait);
    const double longest = double(clock.elapsed()) / 1000;
    remotes.clear();
    EXPECT_EQ(store_.findings(), QStringList());
    StationProcess next(store_.folder(), u"lines"_s, u"next"_s, 1);
    EXPECT_EQ(next.exitStatus(patience), 0);
    store_.tell(next, u"next"_s);
    EXPECT_EQ(store_.findings(), QStringList());
    writeFigures(u"line stalled"_s,
                 {{u"stations with a stalled connection"_s, QString::number(stationCount)},
                  {u"seconds until the last station ended"_s, QString::number(longest, 'f', 1)},
                  {u"seed"_s, QString::number(seed)}},
                 Engine::Server);
}

/// A killed station leaves no lock behind, at whatever point of adding a line it was killed.
TEST_F(BadLine, KilledStationLeavesNoLock)
{
    // Milliseconds until a station gives up waiting for a lock.
    constexpr int waitForALock = 5000;
    StationProcess other(store_.folder(), u"paced"_s, u"other"_s, 1000);
    ASSERT_TRUE(other.waitFor(u"ready"_s));
    int chunks = 0;
    int longest = 0;
    for (bool wasWhole = false; !wasWhole && !HasFailure(); ++chunks) {
        SCOPED_TRACE(testing::Message() << "dead after " << chunks << " chunks of an add");
        Remote remote(store_, u"dead%1"_s.arg(chunks), 1000);
        ASSERT_TRUE(remote.station.waitFor(u"ready"_s));
        remote.askForLines(1);
        // Choosing the series precedes the first line.
        ASSERT_TRUE(remote.station.waitFor(u"line"_s));
        store_.tell(remote.station, remote.name);
        remote.proxy.stallAfter(chunks);
        remote.askForLines(1);
        while (!wasWhole && !remote.proxy.isStalled())
            wasWhole = remote.station.waitFor(u"line"_s, glance);
        remote.station.kill();
        remote.proxy.cut();
        store_.tell(remote.station, remote.name);

        QElapsedTimer clock;
        clock.start();
        other.go("line");
        EXPECT_TRUE(other.waitFor(u"line"_s, waitForALock));
        longest = std::max(longest, int(clock.elapsed()));
        store_.tell(other, u"other"_s);
        EXPECT_EQ(store_.findings(), QStringList());
    }
    EXPECT_GT(chunks, 2);
    EXPECT_LT(longest, waitForALock);
    writeFigures(u"station killed in an add"_s,
                 {{u"moments while a line is added"_s, QString::number(chunks)},
                  {u"longest add of another station, ms"_s, QString::number(longest)}},
                 Engine::Server);
}

} // namespace
