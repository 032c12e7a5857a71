// Counts the round trips to the server per click with a proxy on the connection.

#include "orders/desk.h"
#include "platform/dao/engine/link.h"
#include "support/server_proxy.h"

#include <QEventLoop>
#include <QFile>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

class RoundTripsTest : public QObject
{
    Q_OBJECT

private slots:
    void addingALine_needsElevenRoundTrips();
    void openingAnOrder_greetsTheServerOnce();
};

namespace {

/// Runs the work inside one event of the event loop, like a handler.
template <typename Work>
void inAnEvent(Work work)
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        work();
        loop.quit();
    });
    loop.exec();
}

/// An order test environment whose connection to the server passes through a counting proxy.
struct CountedDesk
{
    CountedDesk()
    {
        dao::Link link = dao::linkAt(desk.store.path()).value();
        proxy = std::make_unique<testsupport::ServerProxy>(link.port);
        link.server = u"127.0.0.1"_s;
        link.port = proxy->port();
        QFile file(desk.store.path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(dao::linkText(link));
    }

    /// Returns the number of round trips of the click itself.
    int addLine() const
    {
        desk.type("TextNum_0", u"120"_s);
        desk.type("TextNum_2", u"100"_s);
        const int before = proxy->roundTrips();
        int after = before;
        inAnEvent([&] {
            desk.click("CmdAdd");
            after = proxy->roundTrips();
        });
        return after - before;
    }
    /// Waits for the timer and the painting that follow a click.
    void settle() const
    {
        QTRY_VERIFY(desk.timerRests());
        desk.form()->grab();
    }

    std::unique_ptr<testsupport::ServerProxy> proxy; ///< Must outlive the connections.
    testsupport::Desk desk;
};

} // namespace

void RoundTripsTest::addingALine_needsElevenRoundTrips()
{
    if (!testsupport::isOnServer())
        QSKIP("requires a server");
    CountedDesk counted;
    testsupport::Desk& desk = counted.desk;
    desk.store.addOrder(1);
    const int series = desk.store.addSeries(u"בלגי 7000"_s, {-1, -1, -2, -2, -3, -3, -4, -4}, 2, 2);
    desk.openOrder(1);
    Module1::SelectedSerialNum = static_cast<std::int16_t>(series);
    for (int warm = 0; warm < 4; ++warm) {
        counted.addLine();
        counted.settle();
    }
    const int before = counted.proxy->roundTrips();
    int untilCommitted = -1;
    connect(desk.on<controls::DataControl>("DataCuts"), &controls::DataControl::rowAdded, this,
            [&] { untilCommitted = counted.proxy->roundTrips() - before; });
    const int ofClick = counted.addLine();
    counted.settle();
    const int ofAll = counted.proxy->roundTrips() - before;
    desk.on<controls::DataControl>("DataCuts")->disconnect(this);
    QCOMPARE(desk.store.scalar(u"SELECT count(*) FROM Cuts"_s).toInt(), 5);

    // The greeting, the series, the order's lines, the last line and the new line.
    QCOMPARE(untilCommitted, 5);
    // The lines again and the grid's current row; the order, and a second query to change it.
    QCOMPARE(ofClick, 9);
    // The last line for the timer, and one page of the grid.
    QCOMPARE(ofAll, 11);
}

void RoundTripsTest::openingAnOrder_greetsTheServerOnce()
{
    if (!testsupport::isOnServer())
        QSKIP("requires a server");
    CountedDesk counted;
    testsupport::Desk& desk = counted.desk;
    desk.addOrderWithLines(1, {1, 2, 3});
    for (int warm = 0; warm < 2; ++warm) {
        desk.openOrder(1);
        counted.settle();
        desk.form()->Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    const int before = counted.proxy->roundTrips();
    int after = before;
    inAnEvent([&] {
        desk.openOrder(1);
        after = counted.proxy->roundTrips();
    });
    // The greeting; the row keys of each of the eight empty lists; the order and its lines.
    QCOMPARE(after - before, 1 + 8 + 2);
}

ZOMREL_QTEST_MAIN(RoundTripsTest)
#include "round_trips_test.moc"
