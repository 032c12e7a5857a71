#include "reliability/figures.h"
#include "reliability/ledger.h"
#include "reliability/station_process.h"

#include "support/plain_sql.h"
#include "support/printers.h"
#include "support/temporary_store.h"
#include "tools/store/checker.h"
#include "tools/store/program.h"

#include <QDate>
#include <QTextStream>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace reliability;
using testsupport::PlainSql;
using testsupport::TemporaryStore;

namespace {

/// The month contains the end of a month and the beginning of daylight saving time.
const QDate firstDay(2026, 3, 10);
constexpr int days = 30;
constexpr int setBack = 2; // Days by which a clock is wrong at times.
constexpr int stepsBeforeMidnight = 3;
constexpr int stepsAfterMidnight = 5;
constexpr int moreStepsThanAMonthHas = 100000;

/// Runs a command of zomrel-store in this process, which has to succeed.
void zomrelStore(const QStringList& arguments)
{
    QString messages;
    QTextStream out(&messages);
    ASSERT_EQ(int(storetools::run(arguments, out, out)), 0) << messages.toStdString();
}

/// Returns a ledger of the store, which gets the stations' series.
Ledger ledgerOf(TemporaryStore& store)
{
    addSeriesOfLines(store);
    return Ledger(store);
}

/// Two stations that stay open for a month, with a clock that the test sets.
class Month : public testing::Test
{
protected:
    Month()
        : store_(TemporaryStore::Contents::Delivered), ledger_(ledgerOf(store_)),
          first_(store_.folder(), u"paced"_s, u"1"_s, moreStepsThanAMonthHas),
          second_(store_.folder(), u"paced"_s, u"2"_s, moreStepsThanAMonthHas)
    {
        ledger_.setDays({firstDay.addDays(-setBack), firstDay.addDays(days)});
        EXPECT_TRUE(first_.waitFor(u"ready"_s));
        EXPECT_TRUE(second_.waitFor(u"ready"_s));
    }

    /// Sets the clock of a station and lets it do some work on that date.
    void work(StationProcess& station, const QDate& date, int steps)
    {
        step(station, "date " + date.toString(Qt::ISODate).toLatin1(), u"date"_s, date);
        for (int i = 0; i < steps; ++i)
            step(station, "work", u"line"_s, date);
    }

    /// Prints the station's order, which numbers its lines anew.
    void print(StationProcess& station, const QDate& date)
    {
        step(station, "print", u"printed"_s, date);
    }

    void backUp(const QString& backup) { zomrelStore({u"backup"_s, store_.path(), backup}); }

    /// Restores a backup of this night under a new name and compares it with the ledger.
    void restoreAndCompare(const QString& backup)
    {
        const QString copy = backup + u".restored"_s;
        zomrelStore({u"restore"_s, backup, copy});
        PlainSql rows(copy);
        EXPECT_EQ(ledger_.findings(rows), QStringList());
        expectDates(rows);
        ++restored_;
    }

    /// Compares the date of each line with the date on which it was added.
    void expectDates(const StoredRows& rows)
    {
        for (const StoredLine& line : storedLines(rows)) {
            const QString tag = line[u"Mashof_Kind"_s].toString();
            EXPECT_EQ(line[u"Order_Date"_s].toString(), dates_.value(tag).toString(Qt::ISODate))
                << tag.toStdString();
        }
    }

    void expectNothingLost()
    {
        EXPECT_EQ(storetools::checkStore(store_.path()), QStringList());
        EXPECT_EQ(ledger_.findings(store_), QStringList());
        expectDates(store_);
        for (StationProcess* const station : {&first_, &second_}) {
            EXPECT_TRUE(station->isAtWork());
            EXPECT_EQ(station->runTimeBoxes(), QStringList());
        }
    }

    TemporaryStore store_;
    Ledger ledger_;
    StationProcess first_;
    StationProcess second_;
    int restored_ = 0;

private:
    void step(StationProcess& station, const QByteArray& word, const QString& report,
              const QDate& date)
    {
        station.go(word);
        ASSERT_TRUE(station.waitFor(report)) << station.errors().toStdString();
        for (const QString& told : station.takeTold()) {
            if (told.startsWith(u"date"))
                continue;
            if (told.startsWith(u"line"))
                dates_[told.section(u' ', 2, 2)] = date;
            ledger_.tell(told, &station == &first_ ? u"1"_s : u"2"_s);
        }
    }

    QMap<QString, QDate> dates_; ///< The date on which each line was added, by its tag.
};

} // namespace

TEST_F(Month, OfMidnightsClocksSetBackAndSuspendedNights_losesNothing)
{
    for (int day = 0; day < days; ++day) {
        const QDate today = firstDay.addDays(day);
        work(first_, today, stepsBeforeMidnight);
        work(first_, today.addDays(1), stepsAfterMidnight);
        const bool clockIsSetBack = day % 7 == 3;
        work(second_, clockIsSetBack ? today.addDays(-setBack) : today, stepsAfterMidnight);
        if (day % 5 == 4)
            print(second_, today);
        first_.suspend();
        work(second_, today.addDays(1), 1);
        const QString backup = u"%1/backup-%2.mdb"_s.arg(store_.folder()).arg(day);
        backUp(backup);
        if (day % 7 == 6)
            restoreAndCompare(backup);
        first_.resume();
        if (HasFailure())
            return;
    }
    expectNothingLost();
    EXPECT_EQ(ledger_.lineCount(), days * (stepsBeforeMidnight + 2 * stepsAfterMidnight + 1));
    writeFigures(u"month"_s, {{u"simulated days of one process"_s, QString::number(days)},
                              {u"lines added in them"_s, QString::number(ledger_.lineCount())},
                              {u"backups restored and compared"_s, QString::number(restored_)}});
}
