// What the commands print in Hebrew about a server.

#include "platform/dao/database.h"
#include "support/temporary_store.h"
#include "tools/store/hebrew_run.h"
#include "tools/store/server_run.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using storetooltest::addressOf;
using storetooltest::expectHebrew;
using storetooltest::named;
using storetooltest::runInHebrew;
using storetooltest::Said;
using storetooltest::ServerSql;
using testsupport::TemporaryStore;
using testsupport::ThrowawayServer;

namespace {

/// A server that does not sync to disk, with an empty database.
class HebrewServerTest : public testing::Test
{
protected:
    void TearDown() override { dao::DBEngine::instance().Idle(); }

    dao::Link link(const QString& database = u"postgres"_s) const
    {
        return {server_.folder(), server_.port(), database, u"zomrel"_s, u"disable"_s};
    }
    QString address() const { return addressOf(link()); }
    Said expectFailure(const QStringList& call) const
    {
        const Said said = runInHebrew(call);
        EXPECT_EQ(said.exitStatus, 1) << named(call, said);
        expectHebrew(call, said);
        EXPECT_TRUE(said.err.contains(u"מה עושים: "_s)) << named(call, said);
        return said;
    }
    void expectSuccess(const QStringList& call) const
    {
        const Said said = runInHebrew(call);
        EXPECT_EQ(said.exitStatus, 0) << named(call, said);
        expectHebrew(call, said);
    }

    ThrowawayServer server_;
    TemporaryStore store_{TemporaryStore::Contents::Delivered};
    QTemporaryDir folder_;
};

} // namespace

TEST_F(HebrewServerTest, UnsafeServer_isRefusedInHebrew)
{
    const Said refused = expectFailure({u"move"_s, store_.path(), address()});
    EXPECT_EQ(refused.plainLines().value(0),
              u"zomrel-store: השרת של המסד 'postgres' בשרת '%1' אינו בטוח לנתונים: ההגדרה fsync "
              "כבויה, והפסקת חשמל עלולה לאבד שורות; ההגדרה full_page_writes כבויה, והפסקת חשמל "
              "עלולה לפגום בשורות. האפשרות --force משתמשת בו בכל זאת."_s.arg(
                  u"%1:%2"_s.arg(link().server, QString::number(link().port))));
    expectSuccess({u"move"_s, u"--force"_s, store_.path(), address()});
    const Said checked = expectFailure({u"check"_s, address()});
    EXPECT_TRUE(
        checked.plainLines().contains(u"שרת: ההגדרה fsync כבויה, והפסקת חשמל עלולה לאבד שורות"_s))
        << named({}, checked);
    EXPECT_TRUE(checked.err.contains(u"בקש ממנהל השרת לתקן את ההגדרות שלו."_s));
}

TEST_F(HebrewServerTest, FailuresOfAServer_areHebrew)
{
    expectFailure({u"backup"_s, addressOf(link(u"missing"_s)), folder_.filePath(u"b.mdb"_s)});
    expectFailure({u"check"_s, address()});
    expectFailure({u"history"_s, u"1"_s, u"--store"_s, address()});
    expectSuccess({u"move"_s, u"--force"_s, store_.path(), address()});
    expectFailure({u"move"_s, u"--force"_s, store_.path(), address()});
    ServerSql(link(u"postgres"_s))
        .run(u"CREATE DATABASE latin ENCODING 'LATIN1' LOCALE 'C' TEMPLATE template0"_s);
    expectFailure({u"move"_s, u"--force"_s, store_.path(), addressOf(link(u"latin"_s))});
}

TEST_F(HebrewServerTest, ConnectedStationIsNamedInHebrew)
{
    expectSuccess({u"move"_s, u"--force"_s, store_.path(), address()});
    const QString backup = folder_.filePath(u"backup.mdb"_s);
    expectSuccess({u"backup"_s, address(), backup});
    expectSuccess({u"link"_s, u"--force"_s, folder_.filePath(u"link.mdb"_s), u"--server"_s,
                   u"%1:%2"_s.arg(server_.folder()).arg(server_.port()), u"--database"_s,
                   u"postgres"_s, u"--user"_s, u"zomrel"_s, u"--tls"_s, u"disable"_s});
    const auto station = dao::DBEngine::instance().OpenDatabase(folder_.filePath(u"link.mdb"_s));
    const storetooltest::Outcome refused =
        storetooltest::zomrelStoreIn(u"he_IL.UTF-8"_s, {u"restore"_s, backup, address()});
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_EQ(refused.err, (QStringList{u"מחובר: משתמש zomrel, כתובת לא ידועה או מקומית"_s,
                                        u"zomrel-store: יש עמדות מחוברות; לא השתנה דבר"_s}));
    EXPECT_EQ(refused.advice.size(), 1);
    station->Close();
}

TEST_F(HebrewServerTest, HistoryNamesChangesInHebrew)
{
    ServerSql sql(link());
    sql.run(storetooltest::run({u"server-setup"_s}).out);
    expectSuccess({u"move"_s, u"--force"_s, store_.path(), address()});
    sql.run(u"INSERT INTO \"Orders\" (\"Number\") VALUES (1)"_s);
    sql.run(u"UPDATE \"Orders\" SET \"CustomerName\" = 'a' WHERE \"Number\" = 1"_s);
    sql.run(u"DELETE FROM \"Orders\" WHERE \"Number\" = 1"_s);
    const QStringList call{u"history"_s, u"1"_s, u"--store"_s, address()};
    const Said said = runInHebrew(call);
    EXPECT_EQ(said.exitStatus, 0);
    expectHebrew(call, said);
    ASSERT_EQ(said.lines().size(), 2) << named(call, said);
    EXPECT_TRUE(said.plainLines()[0].endsWith(
        u"  zomrel  שונה  Orders  1  לפני כן: {\"Number\": 1, \"Open_Close\": 0}"_s))
        << named(call, said);
    EXPECT_TRUE(said.plainLines()[1].contains(u"  zomrel  נמחק  Orders  1  לפני כן: "_s))
        << named(call, said);
}
