// Simulates power cuts while two stations work.

#include "crash/day.h"
#include "crash/lab.h"
#include "crash/recording_vfs.h"
#include "reliability/figures.h"
#include "support/printers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString storeName = u"Aluminium.mdb"_s;

/// The record of a day, with its ledger.
class RecordedDay
{
public:
    RecordedDay() : day_(lab_.at(storeName))
    {
        lab_.putStore(storeName);
        record_ = lab_.record([&] { day_.run(); });
    }

    /// Compares each state with the ledger, without the program.
    crash::Outcome readStates() const
    {
        return examine([&](const crash::State& state, const QString& path) {
            return day_.ledger().findingAt(state.position, crash::readStore(path.toStdString()));
        });
    }

    /// Lets the program start in every `nth` state and go on working.
    crash::Outcome workInStates(int nth) const
    {
        int count = 0;
        return examine([&](const crash::State& state, const QString& path) {
            return count++ % nth == 0 ? workOn(state, path) : std::string();
        });
    }

private:
    template <typename Look>
    crash::Outcome examine(const Look& look) const
    {
        return lab_.examine(
            record_, [&](std::size_t position) { return day_.ledger().phaseAt(position); },
            [&](const crash::State& state, const QString& folder) {
                return look(state, folder + u'/' + storeName);
            });
    }

    /// Returns what is wrong with a store for the program and its companion.
    std::string workOn(const crash::State& state, const QString& path) const
    {
        int code = 0;
        {
            crash::Station station(path);
            station.addOrder(99);
            code = station.addLine(99, 1, 120.5);
        }
        crash::Contents found = crash::readStore(path.toStdString());
        found.erase(crash::orderKey(99));
        if (found.erase(crash::lineKey(code)) != 1)
            return "the new line is missing";
        const crash::Run check = crash::zomrelStore({u"check"_s, path});
        if (check.exitStatus != 0)
            return check.out.toStdString();
        return day_.ledger().findingAt(state.position, found);
    }

    crash::Lab lab_;
    crash::Day day_;
    crash::Record record_;
};

} // namespace

TEST(StationCutsTest, PowerCut_leavesTheAcknowledgedChangesAndAStoreToWorkOn)
{
    const RecordedDay day;
    const crash::Outcome read = day.readStates();
    EXPECT_EQ(read.findings, QStringList());
    EXPECT_GE(read.states, 2000);
    EXPECT_EQ(day.workInStates(10).findings, QStringList());
    reliability::writeFigures(u"crash_stations"_s, {{u"states after a power cut that were read"_s,
                                                     QString::number(read.states)}});
}

TEST(StationCutsTest, PowerCut_withSynchronousFull_losesAcknowledgedChanges)
{
    const crash::FullInsteadOfExtra full;
    const crash::Outcome read = RecordedDay().readStates();
    ASSERT_NE(read.findings, QStringList());
    // The journal is there again after the change was acknowledged, and undoes it.
    EXPECT_TRUE(read.findings.first().endsWith(u"Orders 1 is missing"_s))
        << read.findings.first().toStdString();
}
