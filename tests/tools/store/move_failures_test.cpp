// Tests of moves that are interrupted. The target is either complete or unchanged.

#include "support/plain_sql.h"
#include "support/server_proxy.h"
#include "support/temporary_store.h"
#include "tools/store/server_run.h"

#include <QDir>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using storetooltest::addressOf;
using storetooltest::asText;
using storetooltest::contentsOf;
using storetooltest::Outcome;
using storetooltest::ServerSql;
using storetooltest::zomrelStore;
using testsupport::TemporaryStore;
using testsupport::ThrowawayServer;

namespace {

constexpr int manyLines = 60000;
/// A number of bytes that is reached in the middle of copying the lines: far more than is sent
/// before the lines, and far less than the size of all lines.
constexpr qint64 bytesIntoTheLines = 1 << 20;
constexpr int step = 1;          // Milliseconds.
constexpr int patience = 120000; // Milliseconds.

class MoveFailuresTest : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const QString& name : {u"empty"_s, u"there"_s})
            keeper_.run(u"CREATE DATABASE "_s + name);
        store_.addOrder(1);
        store_.execute(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                       "WHERE i < ?) INSERT INTO Cuts (Code, Order_Num, NUM, Name, MyWidth) "
                       "SELECT i, 1, i, 'line ' || i, i / 7.0 FROM n"_s,
                       {manyLines});
    }

    dao::Link link(const QString& database) const
    {
        return {server_.folder(), server_.port(), database, u"zomrel"_s, u"disable"_s};
    }
    QString address(const QString& database) const { return addressOf(link(database)); }
    QStringList files() const
    {
        return QDir(folder_.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    int tablesIn(const QString& database) const
    {
        return ServerSql(link(database))
            .scalar(u"SELECT count(*) FROM pg_tables WHERE schemaname = 'public'"_s)
            .toInt();
    }
    /// Returns a link to the database through the proxy, which stops a move while it copies the
    /// lines.
    dao::Link heldUp(const QString& database) const
    {
        return {u"127.0.0.1"_s, proxy_.port(), database, u"zomrel"_s, u"disable"_s};
    }
    /// Starts a move from or to a database behind the proxy, and returns while the lines are being
    /// copied. The move continues when the proxy resumes forwarding.
    void startMove(QProcess& process, const QString& from, const QString& to)
    {
        proxy_.stallAfterBytes(bytesIntoTheLines);
        process.setProcessEnvironment(storetooltest::environmentIn(u"C.UTF-8"_s));
        process.start(QStringLiteral(ZOMREL_STORE_PROGRAM), {u"move"_s, u"--force"_s, from, to});
        ASSERT_TRUE(process.waitForStarted());
        while (!proxy_.isStalled())
            ASSERT_FALSE(process.waitForFinished(step)) << "it did not come to its lines";
    }
    /// Waits until no other connection uses the database.
    void waitForTheEndOf(const QString& database)
    {
        QProcess clock;
        const QString others =
            u"SELECT count(*) FROM pg_stat_activity WHERE datname = '%1'"_s.arg(database);
        while (keeper_.scalar(others).toInt() > 0)
            clock.waitForFinished(step);
    }

    ThrowawayServer server_;
    testsupport::ServerProxy proxy_{server_.port()};
    ServerSql keeper_{link(u"postgres"_s)};
    TemporaryStore store_;
    QTemporaryDir folder_;
};

} // namespace

TEST_F(MoveFailuresTest, KilledMoveLeavesTheDatabaseUnchanged)
{
    const QByteArray before = contentsOf(store_.path());
    QProcess process;
    startMove(process, store_.path(), addressOf(heldUp(u"empty"_s)));
    process.kill();
    process.waitForFinished(patience);
    proxy_.cut();
    waitForTheEndOf(u"empty"_s);
    EXPECT_EQ(tablesIn(u"empty"_s), 0);
    EXPECT_EQ(contentsOf(store_.path()), before);
    EXPECT_EQ(zomrelStore({u"move"_s, store_.path(), address(u"empty"_s)}).exitStatus, 0);
}

TEST_F(MoveFailuresTest, KilledMoveLeavesNoFile)
{
    ASSERT_EQ(zomrelStore({u"move"_s, store_.path(), address(u"there"_s)}).exitStatus, 0);
    const QString target = folder_.filePath(u"new.mdb"_s);
    QProcess process;
    startMove(process, addressOf(heldUp(u"there"_s)), target);
    process.kill();
    process.waitForFinished(patience);
    EXPECT_FALSE(QFile::exists(target));
    EXPECT_EQ(zomrelStore({u"move"_s, address(u"there"_s), target}).exitStatus, 0);
}

TEST_F(MoveFailuresTest, LostServerIsReportedAndLeavesTheDatabaseUnchanged)
{
    QProcess process;
    startMove(process, store_.path(), addressOf(heldUp(u"empty"_s)));
    server_.endAtOnce();
    proxy_.resume();
    ASSERT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 1);
    const QStringList said = storetooltest::outcomeOf(process).err;
    EXPECT_EQ(said.size(), 1);
    EXPECT_TRUE(said.value(0).startsWith(
        u"zomrel-store: The connection to %1 was lost: "_s.arg(heldUp(u"empty"_s).place())))
        << asText(said);
    server_.start();
    EXPECT_EQ(tablesIn(u"empty"_s), 0);
}

TEST_F(MoveFailuresTest, LostServerLeavesNoFile)
{
    ASSERT_EQ(zomrelStore({u"move"_s, store_.path(), address(u"there"_s)}).exitStatus, 0);
    QProcess process;
    startMove(process, addressOf(heldUp(u"there"_s)), folder_.filePath(u"new.mdb"_s));
    server_.endAtOnce();
    proxy_.resume();
    ASSERT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(storetooltest::outcomeOf(process).err.size(), 1);
    EXPECT_TRUE(files().isEmpty()) << asText(files());
    server_.start();
    EXPECT_EQ(ServerSql(link(u"there"_s)).scalar(u"SELECT count(*) FROM \"Cuts\""_s), manyLines);
}

TEST_F(MoveFailuresTest, MoveFromAFileIsASnapshotWhileAStationWrites)
{
    QProcess process;
    startMove(process, store_.path(), addressOf(heldUp(u"there"_s)));
    // The station does not have to wait while rows are sent to the server.
    store_.execute(u"PRAGMA busy_timeout = 0"_s);
    store_.execute(u"INSERT INTO Orders (Number) VALUES (2)"_s);
    proxy_.resume();
    ASSERT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    ServerSql server(link(u"there"_s));
    EXPECT_EQ(server.scalar(u"SELECT count(*) FROM \"Orders\""_s), 1);
    EXPECT_EQ(server.scalar(u"SELECT count(*) FROM \"Cuts\""_s), manyLines);
}

TEST_F(MoveFailuresTest, MoveFromADatabaseIsASnapshotWhileAStationWrites)
{
    ASSERT_EQ(zomrelStore({u"move"_s, store_.path(), address(u"there"_s)}).exitStatus, 0);
    const QString target = folder_.filePath(u"new.mdb"_s);
    QProcess process;
    startMove(process, addressOf(heldUp(u"there"_s)), target);
    ServerSql station(link(u"there"_s));
    station.run(u"DELETE FROM \"Cuts\""_s);
    station.run(u"DELETE FROM \"Orders\""_s);
    station.run(u"INSERT INTO \"Serials\" (\"Name\") VALUES ('later')"_s);
    proxy_.resume();
    ASSERT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    testsupport::PlainSql copy(target);
    EXPECT_EQ(copy.scalar(u"SELECT count(*) FROM Orders"_s), 1);
    EXPECT_EQ(copy.scalar(u"SELECT count(*) FROM \"Cuts\""_s), manyLines);
    EXPECT_EQ(copy.scalar(u"SELECT count(*) FROM Serials"_s), 0);
}

TEST_F(MoveFailuresTest, TableCreatedMeanwhileMakesTheMoveFail)
{
    ServerSql other(link(u"empty"_s));
    other.run(u"BEGIN; CREATE TABLE \"ReshetColor\" (x integer)"_s);
    QProcess process;
    process.start(QStringLiteral(ZOMREL_STORE_PROGRAM),
                  {u"move"_s, u"--force"_s, store_.path(), address(u"empty"_s)});
    ASSERT_TRUE(process.waitForStarted());
    const QString waiting = u"SELECT count(*) FROM pg_stat_activity "
                            "WHERE datname = 'empty' AND wait_event_type = 'Lock'"_s;
    while (keeper_.scalar(waiting).toInt() == 0)
        ASSERT_FALSE(process.waitForFinished(step));
    other.run(u"COMMIT"_s);
    ASSERT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(tablesIn(u"empty"_s), 1);
}
