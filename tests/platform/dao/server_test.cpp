// Tests what can happen only with a store on a server: failed log-ins, lost connections, and tables
// that other programs have created.

#include "platform/dao/engine/connection_pool.h"
#include "platform/dao/examination.h"
#include "platform/dao/server_fixture.h"

#include <QElapsedTimer>

#include <future>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace daotest;

namespace {

/// The upper limit in milliseconds for a timeout of a few seconds, also on a busy machine.
constexpr qint64 busyMachine = 30000;

TEST_F(ServerTest, unreachableServer_isNamedInTheError)
{
    dao::Link lost = link();
    lost.port = 1;
    writeLink(lost);
    const Failure failure = failureOf([&] { open(); });
    EXPECT_EQ(failure.number, 3151);
    EXPECT_TRUE(failure.text.contains(lost.place())) << qPrintable(failure.text);
    EXPECT_TRUE(failure.text.contains(u"No such file"_s)) << qPrintable(failure.text);
    lost.server = u"127.0.0.1"_s;
    writeLink(lost);
    const Failure refused = failureOf([&] { open(); });
    EXPECT_EQ(refused.number, 3151);
    EXPECT_TRUE(refused.text.contains(u"Connection refused"_s)) << qPrintable(refused.text);
}

TEST_F(ServerTest, refusedLogIn_givesTheReason)
{
    dao::Link wrong = link();
    wrong.user = u"nobody here"_s;
    writeLink(wrong);
    const Failure user = failureOf([&] { open(); });
    EXPECT_EQ(user.number, 3151);
    EXPECT_TRUE(user.text.contains(u"role \"nobody here\" does not exist"_s))
        << qPrintable(user.text);
    wrong = link();
    wrong.database = u"no such store"_s;
    writeLink(wrong);
    const Failure database = failureOf([&] { open(); });
    EXPECT_EQ(database.number, 3151);
    EXPECT_TRUE(database.text.contains(u"database \"no such store\" does not exist"_s))
        << qPrintable(database.text);
    wrong = link();
    wrong.server = u"127.0.0.1"_s;
    wrong.tls = u"require"_s; // The test server has no certificate.
    writeLink(wrong);
    EXPECT_EQ(errorOf([&] { open(); }), 3151);
}

TEST_F(ServerTest, loopbackAddress_canBeOpened)
{
    dao::Link address = link();
    address.server = u"127.0.0.1"_s;
    address.tls = u"prefer"_s;
    writeLink(address);
    EXPECT_EQ(table(u"Items"_s)->RecordCount(), 0);
}

/// A socket that accepts connections and never answers.
class SilentServer
{
public:
    SilentServer() : listener_(socket(AF_INET, SOCK_STREAM, 0))
    {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(address);
        auto* general = reinterpret_cast<sockaddr*>(&address);
        EXPECT_EQ(bind(listener_, general, size), 0);
        EXPECT_EQ(listen(listener_, 5), 0);
        EXPECT_EQ(getsockname(listener_, general, &size), 0);
        port_ = ntohs(address.sin_port);
    }
    ~SilentServer() { close(listener_); }
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;
    int port() const { return port_; }

private:
    int listener_;
    int port_ = 0;
};

TEST_F(ServerTest, silentServer_failsWithinTheTimeout)
{
    const SilentServer silent;
    dao::Link silence = link();
    silence.server = u"127.0.0.1"_s;
    silence.port = silent.port();
    writeLink(silence);
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(errorOf([&] { open(); }), 3151);
    EXPECT_LT(clock.elapsed(), busyMachine);
}

TEST_F(ServerTest, databaseWithAnotherEncoding_isRefused)
{
    testsupport::runAsKeeper(u"CREATE DATABASE narrow TEMPLATE template0 ENCODING 'LATIN1'"_s);
    dao::Link narrow = link();
    narrow.database = u"narrow"_s;
    writeLink(narrow);
    const Failure failure = failureOf([&] { open(); });
    EXPECT_EQ(failure.number, 3343);
    EXPECT_TRUE(failure.text.contains(narrow.place())) << qPrintable(failure.text);
    testsupport::runAsKeeper(u"DROP DATABASE narrow WITH (FORCE)"_s);
}

TEST_F(ServerTest, damagedLink_isRefused)
{
    writeFile("Zomrel store link 1\nserver = h\n");
    const Failure failure = failureOf([&] { open(); });
    EXPECT_EQ(failure.number, 3343);
    EXPECT_TRUE(failure.text.contains(u"'port' is missing"_s)) << qPrintable(failure.text);
    writeFile("Zomrel store link 1\n" + QByteArray(20000, ' '));
    EXPECT_TRUE(failureOf([&] { open(); }).text.contains(u"it is too long"_s));
}

TEST_F(ServerTest, lostPooledConnection_isReplacedAtOpening)
{
    add(1, 10);
    open();
    ASSERT_EQ(dao::EngineConnection::living(), 1);
    endConnections();
    EXPECT_EQ(table(u"Items"_s)->Fields(u"Num"_s).Value(), 10);
}

TEST_F(ServerTest, connectionLostBetweenTwoCalls_isReplaced)
{
    add(1, 10);
    const auto rows = dynaset(u"Items"_s);
    endConnections();
    EXPECT_EQ(errorOf([&] { rows->Move(0); }), 0);
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(11);
    endConnections();
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 0);
    EXPECT_EQ(scalar(u"SELECT Num FROM Items"_s), 11);
}

TEST_F(ServerTest, connectionLostInATransaction_losesTheTransaction)
{
    add(1, 10);
    const auto rows = dynaset(u"Items"_s);
    rows->database()->BeginTrans();
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(11);
    rows->Update();
    endConnections();
    const Failure failure = failureOf([&] { rows->Move(0); });
    EXPECT_EQ(failure.number, 3146);
    EXPECT_TRUE(failure.text.contains(link().place())) << qPrintable(failure.text);
    EXPECT_NE(errorOf([&] { rows->database()->Rollback(); }), 0);
    EXPECT_EQ(scalar(u"SELECT Num FROM Items"_s), 10);
    EXPECT_EQ(errorOf([&] { rows->Move(0); }), 0) << "no transaction is open any more";
}

TEST_F(ServerTest, failedTransaction_storesNothing)
{
    add(1, 10);
    add(2, 20);
    const auto rows = dynaset(u"Items"_s);
    rows->database()->BeginTrans();
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(11);
    rows->Update();
    rows->Edit();
    rows->Fields(u"Code"_s).SetValue(2);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3022);
    EXPECT_EQ(errorOf([&] { rows->database()->CommitTrans(); }), 3219);
    EXPECT_EQ(errorOf([&] { rows->database()->Rollback(); }), 0);
    EXPECT_EQ(scalar(u"SELECT max(Num) FROM Items"_s), 20);
    EXPECT_EQ(scalar(u"SELECT min(Num) FROM Items"_s), 10);
}

TEST_F(ServerTest, transaction_isNotVisibleToAnotherDatabase)
{
    add(1, 10);
    const auto other = dynaset(u"Items"_s);
    const auto rows = dynaset(u"Items"_s);
    rows->database()->BeginTrans();
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(11);
    rows->Update();
    other->Move(0);
    EXPECT_EQ(other->Fields(u"Num"_s).Value(), 10);
    rows->database()->CommitTrans();
    other->Move(0);
    EXPECT_EQ(other->Fields(u"Num"_s).Value(), 11);
}

TEST_F(ServerTest, connectionLostDuringACall_throwsCallFailed)
{
    add(1, 10);
    dao::DBEngine::instance().Workspaces(0).setLockWait(std::chrono::seconds(20));
    const auto rows = dynaset(u"Items"_s);
    sql(u"BEGIN IMMEDIATE"_s);
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(11);
    const auto killer = std::async(std::launch::async, [this] {
        const dao::Link& place = link();
        const QString waiting = u"FROM pg_stat_activity WHERE datname = '%1' AND "
                                "wait_event_type = 'Lock'"_s.arg(place.database);
        testsupport::runAsKeeper(
            u"DO $$ BEGIN WHILE NOT EXISTS (SELECT %1) LOOP "
            "PERFORM pg_sleep(0.01); PERFORM pg_stat_clear_snapshot(); "
            "END LOOP; PERFORM pg_terminate_backend(pid) %1; END $$"_s.arg(waiting));
    });
    const Failure failure = failureOf([&] { rows->Update(); });
    EXPECT_EQ(failure.number, 3146);
    EXPECT_TRUE(failure.text.contains(link().place())) << qPrintable(failure.text);
    killer.wait();
    sql(u"COMMIT"_s);
    EXPECT_EQ(scalar(u"SELECT Num FROM Items"_s), 10) << "no partial write";
}

TEST_F(ServerTest, answerThatIsLate_failsWithinTheTimeout)
{
    add(1, 10);
    dao::Workspace& workspace = dao::DBEngine::instance().Workspaces(0);
    workspace.setLockWait(std::chrono::seconds(60));
    workspace.setAnswerWait(std::chrono::seconds(1));
    const auto rows = dynaset(u"Items"_s);
    sql(u"BEGIN EXCLUSIVE"_s);
    QElapsedTimer clock;
    clock.start();
    const Failure failure = failureOf([&] { rows->Move(0); });
    EXPECT_EQ(failure.number, 3146);
    EXPECT_TRUE(failure.text.contains(u"no answer within 1 s"_s)) << qPrintable(failure.text);
    EXPECT_LT(clock.elapsed(), busyMachine); // It did not wait for the lock.
    sql(u"COMMIT"_s);
    EXPECT_EQ(errorOf([&] { rows->Move(0); }), 0);
}

TEST_F(ServerTest, tableWithoutRowIds_isNamedInTheError)
{
    sql(u"SELECT 1"_s);
    raw_->exactly(u"CREATE TABLE \"Foreign\" (a integer, b boolean, c uuid)"_s);
    EXPECT_EQ(open()->tableDefs()(u"foreign"_s).Fields().Count(), 3);
    const Failure failure = failureOf([&] { table(u"Foreign"_s); });
    EXPECT_EQ(failure.number, 3343);
    EXPECT_TRUE(failure.text.contains(u"Table 'Foreign' in "_s + link().place()))
        << qPrintable(failure.text);
    EXPECT_TRUE(failure.text.contains(u"zomrel_row"_s));
    EXPECT_EQ(dao::engineFindings(*open()),
              QStringList(u"table 'Foreign' has no column zomrel_row"_s));
}

TEST_F(ServerTest, tablesThatDifferOnlyInCase_areDistinguished)
{
    sql(u"CREATE TABLE T (A LONG)"_s);
    raw_->exactly(u"CREATE TABLE t (b integer, zomrel_row bigint GENERATED ALWAYS AS IDENTITY)"_s);
    EXPECT_EQ(table(u"t"_s)->Fields(0).Name(), u"b"_s);
    EXPECT_EQ(table(u"T"_s)->Fields(0).Name(), u"A"_s);
}

TEST_F(ServerTest, numbersOfWiderTypes_areReadIfTheyFit)
{
    for (const int number : {7, -7, 0})
        add(10 + number, number);
    raw_->exactly(u"ALTER TABLE \"Items\" ALTER \"Num\" TYPE bigint, "
                  "ALTER \"Small\" TYPE numeric USING 3, ALTER \"Amount\" TYPE real USING 1.5"_s);
    raw_->exactly(u"INSERT INTO \"Items\" (\"Code\", \"Num\") VALUES (20, 3000000000)"_s);
    const auto items = table(u"Items"_s);
    EXPECT_EQ(items->Fields(u"Num"_s).Type(), dao::dbLong);
    for (const int number : {7, -7, 0}) {
        EXPECT_EQ(items->Fields(u"Num"_s).Value(), number);
        EXPECT_EQ(items->Fields(u"Small"_s).Value(), 3);
        EXPECT_EQ(items->Fields(u"Amount"_s).Value(), 1.5);
        items->MoveNext();
    }
    EXPECT_EQ(errorOf([&] { items->Fields(u"Num"_s).Value(); }), 6);
}

TEST_F(ServerTest, readOnlyStore_isNotWritten)
{
    add(1, 10);
    raw_.reset();
    testsupport::runAsKeeper(
        u"ALTER DATABASE \"%1\" SET default_transaction_read_only = on"_s.arg(link().database));
    const auto rows = dynaset(u"Items"_s);
    rows->Edit();
    rows->Fields(u"Num"_s).SetValue(11);
    EXPECT_EQ(errorOf([&] { rows->Update(); }), 3027);
    EXPECT_EQ(errorOf([&] { rows->Delete(); }), 3027);
}

TEST_F(ServerTest, missingRights_throwPermissionDenied)
{
    add(1, 10);
    testsupport::runAsKeeper(u"DO $$ BEGIN IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = "
                             "'reader') THEN CREATE ROLE reader LOGIN; END IF; END $$"_s);
    raw_->exactly(u"GRANT SELECT ON \"Items\" TO reader"_s);
    dao::Link reader = link();
    reader.user = u"reader"_s;
    writeLink(reader);
    const auto rows = dynaset(u"Items"_s);
    const Failure failure = failureOf([&] { rows->Delete(); });
    EXPECT_EQ(failure.number, 3051);
    EXPECT_TRUE(failure.text.contains(u"permission denied for table Items"_s))
        << qPrintable(failure.text);
    rows->Close();
    raw_->exactly(u"DROP OWNED BY reader"_s);
}

TEST_F(ServerTest, refusedStatement_keepsTheConnection)
{
    add(1, 10);
    add(2, 20);
    raw_.reset();
    const auto refused = [&] {
        const auto rows = dynaset(u"Items"_s);
        rows->Edit();
        rows->Fields(u"Code"_s).SetValue(2);
        EXPECT_EQ(errorOf([&] { rows->Update(); }), 3022);
    };
    refused();
    EXPECT_EQ(dao::EngineConnection::living(), 1);
    refused();
    EXPECT_EQ(dao::EngineConnection::living(), 1);
}

TEST_F(ServerTest, synchronousCommitOff_isTurnedOnAtOpening)
{
    raw_.reset();
    testsupport::runAsKeeper(
        u"ALTER DATABASE \"%1\" SET synchronous_commit = off"_s.arg(link().database));
    const auto database = open();
    EXPECT_EQ(database->session().rows(u"SHOW synchronous_commit"_s).front().front(), u"on"_s);
}

TEST_F(ServerTest, copyToAFile_isRefused)
{
    const QString copy = folder_.filePath(u"copy.mdb"_s);
    EXPECT_EQ(errorOf([&] { open()->CopyTo(copy); }), 3251);
    EXPECT_FALSE(QFile::exists(copy));
}

TEST_F(ServerTest, anotherStationAssignsNumbers_counterContinues)
{
    const auto database = open();
    dao::TableDef made = database->CreateTableDef(u"Counted"_s);
    made.Fields().Append(made.CreateCounter(u"Code"_s));
    made.Fields().Append(made.CreateField(u"N"_s, dao::dbLong));
    made.indexes().Append(dao::Index({u"PrimaryKey"_s, {u"Code"_s}, true, true}));
    database->tableDefs().Append(made);
    const auto rows = table(u"Counted"_s);
    const auto add = [&] {
        rows->AddNew();
        rows->Update();
        rows->MoveLast();
        return rows->Fields(u"Code"_s).Value().toInt();
    };
    EXPECT_EQ(add(), 1);
    sql(u"INSERT INTO Counted (Code) VALUES (5)"_s);
    EXPECT_EQ(add(), 6);
    sql(u"UPDATE Counted SET Code = 9 WHERE Code = 6"_s);
    EXPECT_EQ(add(), 10);
    sql(u"INSERT INTO Counted (Code) VALUES (2)"_s);
    EXPECT_EQ(add(), 11) << "a lower number does not set the counter back";
}

} // namespace
