// Tests of many stations on one server.

#include "reliability/figures.h"
#include "reliability/server/server_store.h"

#include "support/printers.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;
using namespace reliability;

namespace {

constexpr int patience = 3600000; // Milliseconds.

TEST(ServerStations, LoseNoLineAndRepeatNoOrderNumber)
{
    constexpr int stationCount = 8;
    const int lines = setting("ZOMREL_SERVER_STATION_LINES", 1000);
    ServerStore store;
    QElapsedTimer clock;
    clock.start();
    std::vector<std::unique_ptr<StationProcess>> stations;
    for (int i = 0; i < stationCount; ++i)
        stations.push_back(std::make_unique<StationProcess>(store.folder(), u"lines"_s,
                                                            QString::number(i + 1), lines));
    for (int i = 0; i < stationCount; ++i) {
        StationProcess& station = *stations[std::size_t(i)];
        EXPECT_EQ(station.exitStatus(patience), 0);
        EXPECT_EQ(station.runTimeBoxes(), QStringList());
        store.tell(station, QString::number(i + 1));
    }
    const double seconds = double(clock.elapsed()) / 1000;

    EXPECT_EQ(store.ledger().lineCount(), stationCount * lines);
    EXPECT_EQ(store.findings(), QStringList());
    const int doubled = store.count(u"SELECT count(*) FROM (SELECT 1 FROM Cuts GROUP BY Order_Num, "
                                    "NUM HAVING count(*) > 1) AS doubled"_s);
    writeFigures(u"many stations"_s,
                 {{u"stations at once"_s, QString::number(stationCount)},
                  {u"lines of all stations"_s, QString::number(store.ledger().lineCount())},
                  {u"seconds"_s, QString::number(seconds, 'f', 1)},
                  {u"orders"_s, QString::number(store.count(u"SELECT count(*) FROM Orders"_s))},
                  {u"line numbers given twice in an order"_s, QString::number(doubled)}},
                 Engine::Server);
}

} // namespace
