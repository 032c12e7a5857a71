// How often a click asks a server and waits for it, counted on the line between them.

#include "orders/desk.h"
#include "platform/dao/link.h"
#include "support/server_proxy.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

class RoundTripsTest : public QObject
{
    Q_OBJECT

private slots:
    void addingALineNeedsFew();
};

namespace {

/// A desk whose way to the server leads over a line that counts.
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

    void addLine() const
    {
        desk.type("TextNum_0", u"120"_s);
        desk.type("TextNum_2", u"100"_s);
        desk.click("CmdAdd");
    }
    /// What follows a click: the timer's tick and the painting.
    void settle() const
    {
        QTRY_VERIFY(desk.timerRests());
        desk.form()->grab();
    }

    std::unique_ptr<testsupport::ServerProxy> proxy; ///< Outlives what goes over it.
    testsupport::Desk desk;
};

} // namespace

void RoundTripsTest::addingALineNeedsFew()
{
    if (!testsupport::isOnServer())
        QSKIP("about a server");
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
    counted.addLine();
    const int ofClick = counted.proxy->roundTrips() - before;
    counted.settle();
    const int ofAll = counted.proxy->roundTrips() - before;
    desk.on<controls::DataControl>("DataCuts")->disconnect(this);
    QCOMPARE(desk.store.scalar(u"SELECT count(*) FROM Cuts"_s).toInt(), 5);

    // Two openings, the series, the order's lines, the last of them, the new one.
    QVERIFY2(untilCommitted > 0 && untilCommitted <= 6,
             qPrintable(QString::number(untilCommitted)));
    // The lines again and the row where the grid stood; an opening, the order, and again to change.
    QVERIFY2(ofClick <= 11, qPrintable(QString::number(ofClick)));
    // The last line for the timer, and a page for the grid.
    QVERIFY2(ofAll <= 13, qPrintable(QString::number(ofAll)));
}

ZOMREL_QTEST_MAIN(RoundTripsTest)
#include "round_trips_test.moc"
