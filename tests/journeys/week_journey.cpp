#include "journeys/week.h"

#include "reliability/ledger.h"
#include "reliability/station_process.h"
#include "support/temporary_store.h"
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

/// Lets the station enter an order with two lines and close it.
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

/// Journeys of a whole week, alone and with other stations on the same store.
class WeekJourney : public QObject
{
    Q_OBJECT

private slots:
    void weekAlone_storesItsRows();
    void weekBesideOtherStations_storesItsRows();
};

void WeekJourney::weekAlone_storesItsRows()
{
    Program program;
    const QString begun = today();
    const Week week = workAWeek(program, [] {});
    QCOMPARE(QList<int>({week.first, week.second, week.third, week.next}),
             QList<int>({1, 2, 3, 4}));
    compareWeek(program, week, {begun, today()});
    QCOMPARE(storetools::checkStore(program.storePath()), QStringList());
}

/// One other station works without a pause in an older order and in the catalogue. Another one
/// enters orders of its own before the week's first order and between two of its orders.
void WeekJourney::weekBesideOtherStations_storesItsRows()
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

QTEST_GUILESS_MAIN(WeekJourney)
#include "week_journey.moc"
