#include "journeys/week.h"

#include "reliability/ledger.h"
#include "reliability/station_process.h"
#include "support/temporary_store.h"
#include "support/widgets.h"
#include "tools/store/checker.h"

#include <QDate>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace journeys;
using reliability::Ledger;
using reliability::StationProcess;
using testsupport::TemporaryStore;

namespace {

QString today()
{
    return QDate::currentDate().toString(Qt::ISODate);
}

/// The station takes an order of its own in, with two lines, and closes it.
void workBetween(StationProcess& station, bool opens)
{
    if (opens)
        station.go("order");
    QVERIFY(station.waitFor(u"order "_s));
    for (int line = 0; line < 2; ++line)
        station.go("line");
    station.go("close");
    QVERIFY(station.waitFor(u"closed "_s));
}

void tellLedger(Ledger& ledger, StationProcess& station)
{
    for (const QString& told : station.takeTold())
        ledger.tell(told);
}

} // namespace

/// All that a week brings, alone and beside others.
class WeekJourney : public QObject
{
    Q_OBJECT

private slots:
    void alone();
    void besideOthers();
};

void WeekJourney::alone()
{
    Program program;
    const QString begun = today();
    const Week week = workAWeek(program, [] {});
    QCOMPARE(QList<int>({week.first, week.second, week.third, week.next}),
             QList<int>({1, 2, 3, 4}));
    compareWeek(program, week, {begun, today()});
    QCOMPARE(storetools::checkStore(program.storePath()), QStringList());
}

/// One station works without a pause, in an older order and in the catalogue; another takes orders
/// of its own, before the week's first and between two of them.
void WeekJourney::besideOthers()
{
    TemporaryStore store(TemporaryStore::Contents::Delivered);
    reliability::addSeriesOfLines(store);
    store.addOrder(1, true);
    store.execute(u"UPDATE Orders SET CustomerName = 'לקוח 1'"_s);
    Ledger ledger(store);
    ledger.tell(u"order 1"_s);
    ledger.tell(u"closed 1"_s);
    Program program(store.folder());
    StationProcess restless(store.folder(), u"aside"_s, u"7"_s, 1000000);
    StationProcess other(store.folder(), u"paced"_s, u"8"_s, 100);
    QVERIFY(restless.waitFor(u"line "_s));
    workBetween(other, false);
    tellLedger(ledger, other);

    const QString begun = today();
    const Week week = workAWeek(program, [&] { workBetween(other, true); });
    tellLedger(ledger, other);
    QVERIFY2(restless.isAtWork(), qPrintable(restless.errors()));
    restless.kill();
    other.kill();
    store.waitUntilLeft();
    QCOMPARE(restless.runTimeBoxes(), QStringList());
    tellLedger(ledger, restless);

    QCOMPARE(QList<int>({week.first, week.second, week.third, week.next}),
             QList<int>({3, 4, 6, 7}));
    compareWeek(program, week, {begun, today()});
    QCOMPARE(storetools::checkStore(store.path()), QStringList());
    removeWeek(program, week);
    QVERIFY(ledger.changesTold() > 20);
    QCOMPARE(ledger.findings(store), QStringList());
}

ZOMREL_GUILESS_QTEST_MAIN(WeekJourney)
#include "week_journey.moc"
