// Tests of a server that is killed at random moments while stations work, and started again. A
// quarter of the kills hit a server that waits for its disk.

#include "reliability/figures.h"
#include "reliability/server/server_store.h"

#include "support/printers.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <random>

using namespace Qt::StringLiterals;
using namespace reliability;

namespace {

constexpr int endlessly = 1000000;
constexpr int mostSteps = 6;       ///< Maximum number of steps between two kills.
constexpr int longestMoment = 250; // Milliseconds.
constexpr int patience = 60000;    // Milliseconds.

using Care = testsupport::ThrowawayServer::Care;

class Restarts : public testing::TestWithParam<Care>
{
protected:
    struct Seat
    {
        QString name;
        std::unique_ptr<StationProcess> station;
        int stepsLeft = 0;
    };

    /// Starts missing stations and gives all stations work that lasts beyond the kill.
    void setToWork()
    {
        for (Seat& seat : seats_)
            giveWork(seat);
    }

    void giveWork(Seat& seat)
    {
        if (!seat.station) {
            seat.name = QString::number(++named_);
            seat.station =
                std::make_unique<StationProcess>(store_.folder(), u"paced"_s, seat.name, endlessly);
        }
        seat.stepsLeft = std::uniform_int_distribution<int>(1, mostSteps)(random_);
        seat.station->go(QByteArray("work\n").repeated(seat.stepsLeft - 1) + "work");
    }

    /// Waits until the station works on a line. A station may have confirmed its last line and then
    /// ended, because the kill hit the work that follows a line.
    void waitForWork(Seat& seat)
    {
        while (!seat.station->waitFor(u"? line"_s) && !HasFailure()) {
            checkEnded(seat);
            giveWork(seat);
        }
    }

    /// Kills the server while the stations work or, one time in ten, while they start.
    void killServer()
    {
        whileStarting_ = random_() % 10 == 0;
        if (!whileStarting_) {
            for (Seat& seat : seats_)
                waitForWork(seat);
        }
        std::uniform_int_distribution<int> moment(0, longestMoment);
        seats_[0].station->listen(moment(random_));
        store_.server().endAtOnce();
        store_.server().start();
    }

    /// A station without an unconfirmed change finishes its work. Any other station has ended with
    /// the expected error box.
    void letFinish(Seat& seat)
    {
        while (seat.stepsLeft > 0 && seat.station->waitFor(u"line "_s, patience)) {
            const QStringList told = seat.station->takeTold();
            for (const QString& each : told) {
                store_.ledger().tell(each, seat.name);
                seat.stepsLeft -= each.startsWith(u"line "_s) ? 1 : 0;
            }
        }
        if (seat.stepsLeft == 0) {
            ++wentOn_;
            return;
        }
        checkEnded(seat);
    }

    void checkEnded(Seat& seat)
    {
        EXPECT_EQ(seat.station->exitStatus(patience), 1) << qUtf8Printable(seat.station->errors());
        store_.tell(*seat.station, seat.name);
        const QStringList boxes = seat.station->runTimeBoxes();
        EXPECT_EQ(boxes.size(), 1);
        EXPECT_TRUE(tellsOfTheServer(boxes.value(0)) ||
                    (whileStarting_ && tellsOfACutUpgrade(boxes.value(0))))
            << qUtf8Printable(boxes.join(u'\n'));
        seat.station.reset();
        ++ended_;
    }

    void writeDown(int kills, unsigned seed, double seconds)
    {
        writeFigures(GetParam() == Care::Durable ? u"durable server killed"_s : u"server killed"_s,
                     {{u"kills and starts of the server"_s, QString::number(kills)},
                      {u"stations that went on"_s, QString::number(wentOn_)},
                      {u"stations that ended with an error box"_s, QString::number(ended_)},
                      {u"changes acknowledged"_s, QString::number(store_.ledger().changesTold())},
                      {u"rows compared"_s, QString::number(store_.ledger().rowsCompared())},
                      {u"seconds"_s, QString::number(seconds, 'f', 1)},
                      {u"seed"_s, QString::number(seed)}},
                     Engine::Server);
    }

    std::mt19937 random_;
    ServerStore store_{GetParam()};
    std::array<Seat, 2> seats_;

private:
    int named_ = 0;
    bool whileStarting_ = false;
    int wentOn_ = 0;
    int ended_ = 0;
};

/// Returns this server's share of all kills.
int killsOf(Care care)
{
    const int all = setting("ZOMREL_SERVER_KILLS", 50);
    const int durable = (all + 3) / 4;
    return care == Care::Durable ? durable : all - durable;
}

INSTANTIATE_TEST_SUITE_P(Servers, Restarts, testing::Values(Care::Quick, Care::Durable),
                         [](const auto& care) {
                             return care.param == Care::Durable ? "Durable" : "Quick";
                         });

TEST_P(Restarts, LoseNoConfirmedChange)
{
    const unsigned seed = printedSeed();
    const int kills = killsOf(GetParam());
    random_.seed(seed);
    QElapsedTimer clock;
    clock.start();
    for (int kill = 0; kill < kills && !HasFailure(); ++kill) {
        SCOPED_TRACE(testing::Message() << "kill " << kill << " of seed " << seed);
        setToWork();
        ASSERT_NO_FATAL_FAILURE(killServer());
        for (Seat& seat : seats_)
            letFinish(seat);
        EXPECT_EQ(store_.findings(), QStringList());
    }
    EXPECT_GT(store_.ledger().lineCount(), 0);
    writeDown(kills, seed, double(clock.elapsed()) / 1000);
}

} // namespace
