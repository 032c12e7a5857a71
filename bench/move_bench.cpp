// Compares the time to move a store between a file and a server with the time of PostgreSQL's COPY
// for the same rows. The environment variable ZOMREL_MOVE_LINES sets the number of order lines.

#include "bare_server.h"
#include "paired.h"

#include "support/temporary_store.h"
#include "support/throwaway_server.h"
#include "tools/store/move.h"

#include "platform/dao/database.h"
#include "store/schema.h"

#include <QCoreApplication>
#include <QUrl>

#include <map>

using namespace Qt::StringLiterals;

namespace {

constexpr int usualLines = 100000;
constexpr int linesEach = 10;
constexpr double goal = 2;
constexpr int rounds = 3;

/// Fills the store with order lines. The measures of the lines differ and the names repeat, as in
/// the store of a real workshop.
void fill(testsupport::TemporaryStore& store, int lines)
{
    const int orders = lines / linesEach;
    store.execute(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?)"
                  " INSERT INTO Orders (Number, Order_Date, Open_Close, CustomerName)"
                  " SELECT i, '2026-01-02', -1, 'לקוח ' || i FROM n"_s,
                  {orders});
    store.execute(
        u"WITH RECURSIVE n(i, w, h) AS (SELECT 0, 60.15, 40.05 UNION ALL"
        " SELECT i + 1, 60.15 + (i * 7919 % 20011) * 0.01, 40.05 + (i * 104729 % 18013) * 0.01"
        " FROM n WHERE i + 1 < ?)"
        " INSERT INTO Cuts (Code, Name, MyWidth, MYHeight, Mashkof_W, Mashkof_H, Kanaf_W, Kanaf_H,"
        " Glass_W, Glass_H, Reshet_W, Reshet_H, Mashof_Kind, Mahkof_Color, Mahkof_Count,"
        " Kanaf_Kind, Kanaf_Color, Kanaf_Count, Glass_Kind, Glass_Color, Glass_Count, Reshet_Kind,"
        " Reshet_Color, Reshet_Count, Kind, MyWidth_2, MYHeight_2, U_Thick, U_Cut, U_Vasa,"
        " Shalav_Thick, Shalav_Width, Shalav_Count, Order_Num, Argaz_Width, Argaz_Height,"
        " Order_Date, NUM)"
        " SELECT i + 1, 'בלגי ' || (i % 17 * 100), w, h, w - 0.6, h - 0.6, w / 2 - 1.4, h - 6.5,"
        " w / 2 - 9.8, h - 19.7, w / 2 - 1.2, h - 6.9, 'משקוף רגיל', 'לבן', 2, 'כנף רגילה',"
        " 'ברונזה', 4, 'זכוכית 5 מ\"מ', 'שקוף', 2, 'רשת פיברגלס', 'אפור', 2, 'אור', 0, 0, 0, 0, 0,"
        " 0, 0, 0, i % ? + 1, 0, 0, '2026-01-02', i / ? + 1 FROM n"_s,
        {lines, orders, orders});
}

/// The baseline of moving a store: transfers rows with the SQL statement COPY through plain libpq
/// calls.
class Bare : public bench::BareServer
{
public:
    using BareServer::BareServer;

    /// Reads the table's rows with COPY TO STDOUT and calls the function `visitor` with each
    /// received piece of text.
    template <typename Visitor>
    void copyOut(const QString& table, Visitor&& visitor) const
    {
        run(u"COPY (SELECT * FROM \"%1\" ORDER BY zomrel_row) TO STDOUT"_s.arg(table));
        char* data = nullptr;
        int length = 0;
        while ((length = PQgetCopyData(connection(), &data, 0)) > 0) {
            visitor(data, length);
            PQfreemem(data);
        }
        endCopy();
    }

    void copyIn(const QString& table, const QByteArray& text) const
    {
        constexpr qsizetype block = 1 << 16;
        run(u"COPY \"%1\" FROM STDIN"_s.arg(table));
        for (qsizetype at = 0; at < text.size(); at += block)
            PQputCopyData(connection(), text.constData() + at,
                          static_cast<int>(std::min(block, text.size() - at)));
        PQputCopyEnd(connection(), nullptr);
        endCopy();
    }
};

/// Contains the same large store as a file and as a database on a server, and the COPY text of each
/// table of the store.
class Both
{
public:
    Both() : server_(testsupport::ThrowawayServer::Care::Durable)
    {
        const int lines = qEnvironmentVariableIntValue("ZOMREL_MOVE_LINES");
        fill(file_, lines > 0 ? lines : usualLines);
        makeEmpty(u"moved"_s);
        move(file_.path(), address(u"moved"_s));
        const testsupport::TemporaryStore empty;
        makeEmpty(u"pattern"_s);
        move(empty.path(), address(u"pattern"_s));
        for (const store::TableSchema& each : store::schema())
            Bare(link(u"moved"_s)).copyOut(each.name, [&](const char* data, int length) {
                texts_[each.name].append(data, length);
            });
    }

    static void move(const QString& from, const QString& to)
    {
        const storetools::MoveOutcome outcome =
            storetools::moveStore(storetools::Place(from), storetools::Place(to), {});
        if (!outcome.findings.isEmpty())
            qFatal("%s", qPrintable(outcome.findings.join(u'\n')));
        dao::DBEngine::instance().Idle();
    }

    QString file() const { return file_.path(); }
    QString address(const QString& database) const
    {
        return u"postgresql://zomrel@%1:%2/%3?sslmode=disable"_s.arg(
            QString::fromLatin1(QUrl::toPercentEncoding(server_.folder())),
            QString::number(server_.port()), database);
    }
    dao::Link link(const QString& database) const
    {
        return {server_.folder(), server_.port(), database, u"zomrel"_s, u"disable"_s};
    }
    /// Creates a database with the tables and indexes of a store but without rows.
    void makeEmptyTables(const QString& database) const
    {
        make(database, u"pattern"_s);
        const Bare bare(link(database));
        for (const auto& [table, text] : texts_)
            bare.run(u"DROP TRIGGER IF EXISTS zomrel_counter ON \"%1\""_s.arg(table));
    }
    void makeEmpty(const QString& database) const { make(database, u"template0"_s); }
    const std::map<QString, QByteArray>& texts() const { return texts_; }

private:
    void make(const QString& database, const QString& pattern) const
    {
        const Bare keeper(link(u"postgres"_s));
        keeper.run(u"DROP DATABASE IF EXISTS "_s + database);
        keeper.run(u"CREATE DATABASE %1 TEMPLATE %2"_s.arg(database, pattern));
        keeper.run(u"CHECKPOINT"_s);
    }

    testsupport::ThrowawayServer server_;
    testsupport::TemporaryStore file_;
    std::map<QString, QByteArray> texts_;
};

const Both& both()
{
    static const Both all;
    return all;
}

void copyAllIn(const QString& database)
{
    const Bare bare(both().link(database));
    for (const auto& [table, text] : both().texts())
        bare.copyIn(table, text);
}

void copyAllOut(const QString& database)
{
    qint64 bytes = 0;
    const Bare bare(both().link(database));
    for (const auto& [table, text] : both().texts())
        bare.copyOut(table, [&](const char*, int length) { bytes += length; });
    benchmark::DoNotOptimize(bytes);
}

void MoveToServer(benchmark::State& state)
{
    bench::Pairs pairs;
    for ([[maybe_unused]] auto _ : state) {
        both().makeEmpty(u"target"_s);
        const double ours =
            bench::secondsOf([] { Both::move(both().file(), both().address(u"target"_s)); });
        both().makeEmptyTables(u"bare"_s);
        pairs.add(ours, bench::secondsOf([] { copyAllIn(u"bare"_s); }));
        state.SetIterationTime(ours);
    }
    pairs.report(state, goal);
}
BENCHMARK(MoveToServer)->UseManualTime()->Unit(benchmark::kSecond)->Iterations(rounds);

/// Measures moving a store from a server to a file. The baseline copies the rows out of the server
/// with COPY. COPY cannot write an SQLite file, so the baseline then writes the rows into empty
/// tables on the server. The time of copying the rows out is also reported separately.
void MoveToFile(benchmark::State& state)
{
    both();
    bench::Pairs pairs;
    std::vector<double> outAlone;
    for ([[maybe_unused]] auto _ : state) {
        const QTemporaryDir folder;
        const QString target = folder.filePath(u"moved.mdb"_s);
        const double ours =
            bench::secondsOf([&] { Both::move(both().address(u"moved"_s), target); });
        both().makeEmptyTables(u"bare"_s);
        outAlone.push_back(bench::secondsOf([] { copyAllOut(u"moved"_s); }));
        pairs.add(ours, outAlone.back() + bench::secondsOf([] { copyAllIn(u"bare"_s); }));
        state.SetIterationTime(ours);
    }
    pairs.report(state, goal);
    state.counters["out_alone"] = bench::median(outAlone);
}
BENCHMARK(MoveToFile)->UseManualTime()->Unit(benchmark::kSecond)->Iterations(rounds);

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    dao::DBEngine::instance().Workspaces(0).setAnswerWait(std::chrono::minutes(10));
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
