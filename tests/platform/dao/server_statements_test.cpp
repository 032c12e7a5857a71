// Tests which statements the server keeps prepared, and how many statements are sent.

#include "platform/dao/engine/session.h"
#include "platform/dao/server_fixture.h"
#include "support/server_proxy.h"

#include <QEventLoop>
#include <QTimer>

using namespace daotest;

namespace {

using ServerStatementsTest = ServerTest;

/// Returns the number of statements that the server keeps prepared, without the greeting.
int keptStatements(dao::Database& database)
{
    return database.session()
        .rows(u"SELECT count(*) FROM pg_prepared_statements WHERE name <> 'zomrel_greeting'"_s)
        .front()
        .front()
        .toInt();
}

TEST_F(ServerStatementsTest, repeatedStatement_isPrepared)
{
    add(1, 10);
    add(2, 20);
    const auto database = open();
    const auto nameOf = [&](int number) {
        return database
            ->OpenRecordset(u"SELECT * FROM Items WHERE Num = %1"_s.arg(number), dao::dbOpenDynaset)
            ->Fields(u"Code"_s)
            .Value();
    };
    EXPECT_EQ(nameOf(10), 1);
    EXPECT_EQ(keptStatements(*database), 0) << "a statement that is used once is not prepared";
    EXPECT_EQ(nameOf(20), 2);
    EXPECT_EQ(nameOf(10), 1);
    EXPECT_EQ(keptStatements(*database), 1);
}

TEST_F(ServerStatementsTest, numberInARepeatedStatement_isComparedExactly)
{
    add(1, 2);
    const auto database = open();
    for (int i = 0; i < 8; ++i) {
        for (const QString& number : {u"1.5"_s, u"2.5"_s, u"5000000000"_s, u"-5000000000"_s})
            EXPECT_EQ(database
                          ->OpenRecordset(u"SELECT * FROM Items WHERE Num = "_s + number,
                                          dao::dbOpenDynaset)
                          ->RecordCount(),
                      0)
                << number.toStdString();
        EXPECT_EQ(
            database->OpenRecordset(u"SELECT * FROM Items WHERE Num = 2"_s, dao::dbOpenDynaset)
                ->RecordCount(),
            1);
    }
}

TEST_F(ServerStatementsTest, preparedStatementAfterATableChange_isExecuted)
{
    add(1, 10);
    const auto database = open();
    const auto rows = database->OpenRecordset(u"Items"_s, dao::dbOpenDynaset);
    for (int i = 0; i < 8; ++i)
        rows->Move(0);
    ASSERT_EQ(keptStatements(*database), 1);
    sql(u"SELECT 1"_s);
    raw_->exactly(u"ALTER TABLE \"Items\" ALTER \"Name\" TYPE varchar(30)"_s);
    rows->Move(0);
    EXPECT_EQ(rows->Fields(u"Num"_s).Value(), 10);
    database->session().run(u"DEALLOCATE ALL"_s);
    rows->Move(0);
    EXPECT_EQ(rows->Fields(u"Num"_s).Value(), 10);
}

TEST_F(ServerStatementsTest, statementInATransaction_isNotPrepared)
{
    add(1, 10);
    const auto rows = dynaset(u"Items"_s);
    rows->database()->BeginTrans();
    for (int i = 0; i < 4; ++i)
        rows->Move(0);
    EXPECT_EQ(keptStatements(*rows->database()), 0);
    rows->database()->Rollback();
}

TEST_F(ServerStatementsTest, openingsInOneEvent_sendOneGreeting)
{
    const testsupport::ServerProxy proxy(link().port);
    dao::Link counted = link();
    counted.server = u"127.0.0.1"_s;
    counted.port = proxy.port();
    writeLink(counted);
    open(); // The first opening logs in.
    QList<int> trips;
    const auto openTwice = [&] {
        const int before = proxy.roundTrips();
        open();
        open();
        trips.append(proxy.roundTrips() - before);
    };
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        openTwice();
        QTimer::singleShot(0, &loop, [&] {
            openTwice();
            loop.quit();
        });
    });
    loop.exec();
    openTwice();
    EXPECT_EQ(trips, (QList<int>{1, 1, 2}))
        << "each event sends a greeting, and so does each opening outside of one";
}

TEST_F(ServerStatementsTest, tableChangedInTheSameEvent_isSeenAtTheNextOpening)
{
    bool seen = false;
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        const auto database = open();
        const auto other = open();
        database->BeginTrans();
        dao::TableDef items = database->tableDefs()(u"Items"_s);
        items.Fields().Append(items.CreateField(u"Extra"_s, dao::dbLong));
        open();
        database->CommitTrans();
        seen = open()->OpenRecordset(u"Items"_s, dao::dbOpenTable)->FieldCount() == 9;
        loop.quit();
    });
    loop.exec();
    EXPECT_TRUE(seen);
}

} // namespace
