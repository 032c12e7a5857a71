// Tests of what a station's role may do to the other stations, and of the log of changes.

#include "platform/dao/database.h"
#include "support/temporary_store.h"
#include "tools/store/server_run.h"

#include <QRegularExpression>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using storetooltest::addressOf;
using storetooltest::asText;
using storetooltest::Outcome;
using storetooltest::ServerSql;
using storetooltest::zomrelStore;
using testsupport::TemporaryStore;
using testsupport::ThrowawayServer;

namespace {

constexpr auto insufficientPrivilege = "42501"_L1;
const QString stations = u"saw,office"_s;

/// A server with a database that was set up for two stations, and a store that the owner has moved
/// there: order 1 with one line.
class ServerStationsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ServerSql(linkAs(u"zomrel"_s, u"postgres"_s)).run(u"CREATE DATABASE store"_s);
        setUp(stations);
        TemporaryStore store(TemporaryStore::Contents::Delivered);
        store.addOrder(1, true);
        store.addLine(1, 1);
        const Outcome moved =
            zomrelStore({u"move"_s, store.path(), addressOf(linkAs(u"zomrel_owner"_s))});
        ASSERT_EQ(moved.exitStatus, 0) << asText(moved.err);
    }
    void TearDown() override { dao::DBEngine::instance().Idle(); }

    dao::Link linkAs(const QString& user, const QString& database = u"store"_s) const
    {
        return {server_.folder(), server_.port(), database, user, u"disable"_s};
    }
    void setUp(const QString& names) const
    {
        const Outcome setup = zomrelStore({u"server-setup"_s, u"--station"_s, names});
        ASSERT_EQ(setup.exitStatus, 0) << asText(setup.err);
        ServerSql(linkAs(u"zomrel"_s)).run(setup.out.join(u'\n'));
    }
    /// Expects that this role is refused all of the statements.
    void expectRefusals(const QString& user, const QStringList& statements) const
    {
        ServerSql sql(linkAs(user));
        // Read-only sessions are refused earlier; a role may have set this for its own sessions.
        sql.run(u"SET default_transaction_read_only = off"_s);
        for (const QString& each : statements)
            EXPECT_EQ(sql.errorOf(each), insufficientPrivilege) << each.toStdString();
    }
    /// Expects that this station can add a line and change it.
    void expectWork(const QString& user) const
    {
        ServerSql sql(linkAs(user));
        sql.run(u"INSERT INTO \"Cuts\" (\"Order_Num\", \"NUM\") VALUES (1, 50)"_s);
        sql.run(u"UPDATE \"Cuts\" SET \"NUM\" = 51 WHERE \"NUM\" = 50"_s);
        sql.run(u"DELETE FROM \"Cuts\" WHERE \"NUM\" = 51"_s);
    }
    /// Returns the output of the command history without the moments.
    QStringList historyOf(int order, const QString& user) const
    {
        const Outcome outcome = zomrelStore(
            {u"history"_s, QString::number(order), u"--store"_s, addressOf(linkAs(user))});
        EXPECT_EQ(outcome.exitStatus, 0) << asText(outcome.err);
        QStringList lines;
        for (const QString& each : outcome.out) {
            static const QRegularExpression moment(
                u"^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d  "_s);
            lines.append(QString(each).remove(moment));
        }
        return lines;
    }

    ThrowawayServer server_;
};

} // namespace

TEST_F(ServerStationsTest, StationThatChangesItsOwnRole_harmsNoOther)
{
    ServerSql saw(linkAs(u"saw"_s));
    saw.run(u"ALTER ROLE saw SET default_transaction_read_only = on"_s);
    saw.run(u"ALTER ROLE saw PASSWORD 'other'"_s);
    saw.run(u"DROP OWNED BY saw"_s);
    expectRefusals(u"saw"_s, {u"ALTER ROLE office SET default_transaction_read_only = on"_s,
                              u"ALTER ROLE office PASSWORD 'other'"_s, u"DROP OWNED BY office"_s,
                              u"DROP OWNED BY zomrel_owner"_s, u"SET ROLE office"_s,
                              u"ALTER ROLE zomrel_owner PASSWORD 'other'"_s});
    expectWork(u"office"_s);
    EXPECT_EQ(zomrelStore({u"check"_s, addressOf(linkAs(u"office"_s))}).exitStatus, 0);
}

TEST_F(ServerStationsTest, StationThatIsAddedLater_canWork)
{
    setUp(u"door"_s);
    expectWork(u"door"_s);
    expectWork(u"saw"_s);
    EXPECT_EQ(zomrelStore({u"check"_s, addressOf(linkAs(u"door"_s))}).exitStatus, 0);
}

TEST_F(ServerStationsTest, NumbersFarBeyondTheLastOne_areRefused)
{
    expectRefusals(u"saw"_s,
                   {u"INSERT INTO \"Cuts\" (\"Code\", \"Order_Num\") VALUES (2147483647, 1)"_s,
                    u"INSERT INTO \"Cuts\" (\"Code\", \"Order_Num\") VALUES (1000000001, 1)"_s,
                    u"UPDATE \"Cuts\" SET \"Code\" = 2147483647"_s,
                    u"INSERT INTO \"Serials\" (\"AutoNum\") VALUES (2147483647)"_s,
                    u"INSERT INTO \"GlassKind\" (\"Code\") VALUES (2147483647)"_s,
                    u"INSERT INTO \"Orders\" (\"Number\") VALUES (1002)"_s,
                    u"UPDATE \"Orders\" SET \"Number\" = 32767"_s,
                    u"INSERT INTO \"Cuts\" (\"Order_Num\", zomrel_row) OVERRIDING SYSTEM VALUE "
                    "VALUES (1, 1000)"_s,
                    u"INSERT INTO \"Orders\" (\"Number\", zomrel_row) OVERRIDING SYSTEM VALUE "
                    "VALUES (2, 1000)"_s});
    ServerSql office(linkAs(u"office"_s));
    office.run(u"INSERT INTO \"Orders\" (\"Number\") VALUES (2)"_s);
    EXPECT_EQ(office.scalar(u"INSERT INTO \"Cuts\" (\"Order_Num\") VALUES (2) "
                            "RETURNING \"Code\" < 100"_s),
              1);
    // The owner is free to assign numbers.
    ServerSql(linkAs(u"zomrel_owner"_s))
        .run(u"INSERT INTO \"Orders\" (\"Number\") VALUES (5000)"_s);
    office.run(u"INSERT INTO \"Orders\" (\"Number\") VALUES (5001)"_s);
}

TEST_F(ServerStationsTest, ChangesOfAnOrder_areInItsHistory)
{
    ServerSql saw(linkAs(u"saw"_s));
    saw.run(u"INSERT INTO \"Orders\" (\"Number\") VALUES (2)"_s);
    saw.run(u"INSERT INTO \"Cuts\" (\"Order_Num\", \"NUM\") VALUES (2, 1)"_s);
    const QString code =
        saw.scalar(u"SELECT \"Code\" FROM \"Cuts\" WHERE \"Order_Num\" = 2"_s).toString();
    ServerSql office(linkAs(u"office"_s));
    office.run(u"UPDATE \"Cuts\" SET \"NUM\" = 7 WHERE \"Order_Num\" = 2"_s);
    office.run(u"UPDATE \"Cuts\" SET \"NUM\" = 7 WHERE \"Order_Num\" = 2"_s); // changes nothing
    ServerSql(linkAs(u"zomrel_owner"_s)).run(u"DELETE FROM \"Cuts\" WHERE \"Order_Num\" = 2"_s);
    const QString row = u"{\"NUM\": %1, \"Code\": %2, \"Order_Num\": 2}"_s;
    const QStringList expected{
        u"saw  added  Orders  2"_s,
        u"saw  added  Cuts  %1"_s.arg(code),
        u"office  changed  Cuts  %1  before: "_s.arg(code) + row.arg(u"1"_s, code),
        u"zomrel_owner  deleted  Cuts  %1  before: "_s.arg(code) + row.arg(u"7"_s, code),
    };
    EXPECT_EQ(historyOf(2, u"office"_s), expected);
    EXPECT_EQ(historyOf(1, u"saw"_s), QStringList(u"no changes of order 1 are logged"_s))
        << "rows that move has copied are not logged";
    saw.run(u"UPDATE \"Serials\" SET \"Name\" = 'x' WHERE \"AutoNum\" = 1"_s);
    EXPECT_EQ(saw.scalar(u"SELECT count(*) FROM zomrel_log.changes WHERE table_name = 'Serials' "
                         "AND who = 'saw' AND action = 'changed' AND key = '1' "
                         "AND old_row ->> 'Name' <> 'x'"_s),
              1);
}

TEST_F(ServerStationsTest, Log_cannotBeChangedByStations)
{
    expectWork(u"saw"_s);
    expectRefusals(
        u"saw"_s,
        {u"UPDATE zomrel_log.changes SET who = 'office'"_s, u"DELETE FROM zomrel_log.changes"_s,
         u"INSERT INTO zomrel_log.changes (action, table_name, key) VALUES ('a', 'b', 'c')"_s,
         u"TRUNCATE zomrel_log.changes"_s, u"ALTER TABLE \"Cuts\" DISABLE TRIGGER ALL"_s,
         u"DROP TRIGGER zomrel_history ON \"Cuts\""_s, u"SET session_replication_role = replica"_s,
         u"DROP EVENT TRIGGER zomrel_protect"_s,
         u"CREATE OR REPLACE FUNCTION zomrel_log.log_change() RETURNS trigger LANGUAGE plpgsql AS "
         "'BEGIN RETURN NULL; END'"_s,
         u"TRUNCATE \"Cuts\""_s});
}

TEST_F(ServerStationsTest, RestoredStore_isLoggedAndProtected)
{
    const QTemporaryDir folder;
    const QString copy = folder.filePath(u"copy.mdb"_s);
    ASSERT_EQ(zomrelStore({u"backup"_s, addressOf(linkAs(u"saw"_s)), copy}).exitStatus, 0);
    const Outcome restored =
        zomrelStore({u"restore"_s, copy, addressOf(linkAs(u"zomrel_owner"_s))});
    ASSERT_EQ(restored.exitStatus, 0) << asText(restored.err);
    ServerSql(linkAs(u"saw"_s)).run(u"UPDATE \"Cuts\" SET \"NUM\" = 9"_s);
    EXPECT_EQ(historyOf(1, u"saw"_s).size(), 1);
    expectRefusals(u"saw"_s, {u"UPDATE \"Cuts\" SET \"Code\" = 2147483647"_s});
}

TEST_F(ServerStationsTest, WrongCallOfHistoryOrSetup_isRefused)
{
    EXPECT_EQ(zomrelStore({u"history"_s, u"one"_s}).exitStatus, 2);
    for (const QString& names :
         {u"Saw"_s, u"saw,"_s, u"saw;office"_s, u"zomrel_owner"_s, u"pg_saw"_s, u"a\"b"_s, u"a'b"_s,
          u"zomrel_log"_s, QString(64, u'a')})
        EXPECT_EQ(zomrelStore({u"server-setup"_s, u"--station"_s, names}).exitStatus, 2)
            << names.toStdString();
    const TemporaryStore embedded(TemporaryStore::Contents::Delivered);
    const Outcome outcome = zomrelStore({u"history"_s, u"1"_s, u"--store"_s, embedded.path()});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err, QStringList(u"zomrel-store: Only a store on a server has a log of "
                                       "changes."_s));
}
