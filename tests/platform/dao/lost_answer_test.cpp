// Tests of a connection that is lost while a row is added: the error says whether the row is
// stored.

#include "platform/dao/server_fixture.h"
#include "support/server_connection.h"
#include "support/server_proxy.h"

#include <QElapsedTimer>

using namespace daotest;
using testsupport::ServerProxy;

namespace {

const QString stored = u". The new row is stored."_s;
const QString notStored = u". The new row is not stored."_s;
const QString notKnown = u". It is not known whether the new row is stored."_s;

class LostAnswerTest : public ServerTest
{
protected:
    void SetUp() override
    {
        ServerTest::SetUp();
        if (!isOnServer())
            return;
        const auto database = open();
        dao::TableDef made = database->CreateTableDef(u"Counted"_s);
        made.Fields().Append(made.CreateCounter(u"Code"_s));
        made.Fields().Append(made.CreateField(u"N"_s, dao::dbLong));
        made.indexes().Append(dao::Index({u"PrimaryKey"_s, {u"Code"_s}, true, true}));
        database->tableDefs().Append(made);
        database->Close();
        direct_ = link();
        useProxy();
    }
    void TearDown() override
    {
        if (proxy_)
            proxy_->cut();
        ServerTest::TearDown();
    }

    /// The errors that said what became of a row.
    struct Told
    {
        int stored = 0;
        int notStored = 0;
    };
    /// Adds one row after another, each over a connection of its own that fails after one chunk
    /// more, until a row is added without a failure. Compares each error with the table. The
    /// statement is sent in one step if it is the connection's second one, and in two steps, as
    /// a new prepared statement, if it is the third one.
    Told sweep(const std::function<void(ServerProxy&, int)>& fail)
    {
        Told told;
        for (const int before : {1, 2}) {
            for (int chunks = 0; !addsUnder(fail, before, chunks, told) && !HasFailure(); ++chunks)
                ;
        }
        return told;
    }

    /// Returns true if the row was added without a failure.
    bool addsUnder(const std::function<void(ServerProxy&, int)>& fail, int before, int chunks,
                   Told& told)
    {
        SCOPED_TRACE(testing::Message() << before << " rows before, " << chunks << " chunks");
        useProxy();
        const auto rows = rowsWith(before);
        const int count = rowCount();
        fail(*proxy_, chunks);
        const Failure failure = failureOf([&] { addTo(*rows, 9); });
        const int added = rowCount() - count;
        if (failure.number == 0) {
            EXPECT_EQ(added, 1);
            return true;
        }
        const bool isStored = failure.text.endsWith(stored);
        const bool isNotStored = failure.text.endsWith(notStored);
        EXPECT_EQ(failure.number, 3146);
        EXPECT_EQ(added, isStored ? 1 : 0) << qPrintable(failure.text);
        // Without a sentence, the failure came before the statement that adds the row.
        EXPECT_EQ(failure.text.contains(u"stored"_s), isStored || isNotStored)
            << qPrintable(failure.text);
        told.stored += isStored ? 1 : 0;
        told.notStored += isNotStored ? 1 : 0;
        return false;
    }

    void useProxy()
    {
        proxy_ = std::make_unique<ServerProxy>(direct_.port);
        dao::Link through = direct_;
        through.server = u"127.0.0.1"_s;
        through.port = proxy_->port();
        writeLink(through);
    }

    /// Adds a row to an open recordset.
    static void addTo(dao::Recordset& rows, int n)
    {
        rows.AddNew();
        rows.Fields(u"N"_s).SetValue(n);
        rows.Update();
    }
    /// Adds this number of rows.
    std::shared_ptr<dao::Recordset> rowsWith(int count) const
    {
        auto rows = table(u"Counted"_s);
        for (int n = 1; n <= count; ++n)
            addTo(*rows, n);
        return rows;
    }
    int rowCount()
    {
        return serverConnection().rows(u"SELECT count(*) FROM \"Counted\""_s)[0][0].toInt();
    }
    testsupport::ServerConnection& serverConnection()
    {
        if (!plain_)
            plain_ = std::make_unique<testsupport::ServerConnection>(direct_);
        return *plain_;
    }

    dao::Link direct_;
    std::unique_ptr<ServerProxy> proxy_;
    std::unique_ptr<testsupport::ServerConnection> plain_;
};

/// Expects a lost connection whose error ends with the sentence.
void expectLoss(const Failure& failure, const QString& sentence)
{
    EXPECT_EQ(failure.number, 3146);
    EXPECT_TRUE(failure.text.startsWith(u"The connection to database '"_s))
        << qPrintable(failure.text);
    EXPECT_TRUE(failure.text.endsWith(sentence)) << qPrintable(failure.text);
    EXPECT_FALSE(failure.text.contains(u".."_s)) << qPrintable(failure.text);
}

TEST_F(LostAnswerTest, CutAnswer_errorIsTrue)
{
    const Told told = sweep([](ServerProxy& proxy, int chunks) {
        proxy.cutAfter(ServerProxy::Direction::ToStation, chunks);
    });
    EXPECT_GT(told.stored, 0);
}

TEST_F(LostAnswerTest, CutRequest_errorIsTrue)
{
    const Told told = sweep([](ServerProxy& proxy, int chunks) {
        proxy.cutAfter(ServerProxy::Direction::ToServer, chunks);
    });
    EXPECT_GT(told.notStored, 0);
    EXPECT_EQ(told.stored, 0);
}

TEST_F(LostAnswerTest, SwallowedAnswer_errorIsTrue)
{
    dao::DBEngine::instance().Workspaces(0).setAnswerWait(std::chrono::seconds(2));
    const Told told = sweep([](ServerProxy& proxy, int chunks) {
        proxy.swallowAfter(ServerProxy::Direction::ToStation, chunks);
    });
    EXPECT_GT(told.stored, 0);
}

TEST_F(LostAnswerTest, SwallowedRequest_errorIsTrue)
{
    dao::DBEngine::instance().Workspaces(0).setAnswerWait(std::chrono::seconds(2));
    const Told told = sweep([](ServerProxy& proxy, int chunks) {
        proxy.swallowAfter(ServerProxy::Direction::ToServer, chunks);
    });
    EXPECT_GT(told.notStored, 0);
    EXPECT_EQ(told.stored, 0);
}

TEST_F(LostAnswerTest, NextRow_isAddedOverTheNewConnection)
{
    const auto rows = rowsWith(4);
    proxy_->cutAfter(ServerProxy::Direction::ToStation, 0);
    EXPECT_EQ(failureOf([&] { addTo(*rows, 9); }).number, 3146);
    const int count = rowCount();
    addTo(*rows, 10);
    EXPECT_EQ(rowCount(), count + 1);
}

/// The server still has the request when the station asks. The row must not be stored after the
/// user was told that it is not.
TEST_F(LostAnswerTest, RequestThatIsStillWaiting_isRefusedLater)
{
    dao::DBEngine::instance().Workspaces(0).setLockWait(std::chrono::seconds(60));
    dao::DBEngine::instance().Workspaces(0).setAnswerWait(std::chrono::seconds(2));
    const auto rows = rowsWith(1);
    EXPECT_EQ(serverConnection().errorOf(u"BEGIN"_s), QString());
    EXPECT_EQ(serverConnection().errorOf(u"LOCK TABLE \"Counted\" IN SHARE MODE"_s), QString());
    expectLoss(failureOf([&] { addTo(*rows, 9); }), notStored);
    EXPECT_EQ(serverConnection().errorOf(u"COMMIT"_s), QString());
    const QString busy = u"SELECT count(*) FROM pg_stat_activity WHERE datname = "
                         "current_database() AND pid <> pg_backend_pid() AND state = 'active'"_s;
    QElapsedTimer clock;
    clock.start();
    while (serverConnection().rows(busy)[0][0].toInt() > 0 && clock.elapsed() < 60000)
        serverConnection().rows(u"SELECT pg_sleep(0.01)"_s);
    EXPECT_LT(clock.elapsed(), 60000);
    EXPECT_EQ(rowCount(), 1);
}

TEST_F(LostAnswerTest, UnreachableServer_fateIsNotKnown)
{
    dao::DBEngine::instance().Workspaces(0).setAnswerWait(std::chrono::seconds(2));
    const auto rows = rowsWith(1);
    proxy_->stallAfter(1); // the request passes
    expectLoss(failureOf([&] { addTo(*rows, 9); }), notKnown);
    EXPECT_EQ(rowCount(), 2);
}

TEST_F(LostAnswerTest, StoreWithoutTokens_fateIsNotKnown)
{
    EXPECT_EQ(serverConnection().errorOf(u"DROP SCHEMA zomrel_log CASCADE"_s), QString());
    // The second use of a statement prepares it, so only the third one is sent with its row at
    // once.
    const auto rows = rowsWith(2);
    proxy_->cutAfter(ServerProxy::Direction::ToStation, 0);
    expectLoss(failureOf([&] { addTo(*rows, 9); }), notKnown);
    EXPECT_EQ(rowCount(), 3);
}

TEST_F(LostAnswerTest, TokensOfAConnection_onlyTheLastIsKept)
{
    EXPECT_EQ(serverConnection().errorOf(u"INSERT INTO zomrel_log.answers VALUES "
                                         u"(gen_random_uuid(), now() - interval '8 days'), "
                                         "(gen_random_uuid(), now() - interval '6 days')"_s),
              QString());
    rowsWith(5);
    const QString count = u"SELECT count(*) FROM zomrel_log.answers"_s;
    EXPECT_EQ(serverConnection().rows(count)[0][0].toInt(), 2) << "the old one is deleted";
}

TEST_F(LostAnswerTest, RefusedRow_leavesNoToken)
{
    serverConnection().errorOf(u"ALTER TABLE \"Counted\" ADD CHECK (\"N\" < 100)"_s);
    const auto rows = rowsWith(1);
    EXPECT_EQ(failureOf([&] { addTo(*rows, 100); }).number, 3022);
    addTo(*rows, 2);
    EXPECT_EQ(serverConnection().rows(u"SELECT count(*) FROM zomrel_log.answers"_s)[0][0].toInt(),
              1);
    EXPECT_EQ(rowCount(), 2);
}

} // namespace
