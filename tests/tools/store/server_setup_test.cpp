#include "base/module1.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "store/store_access.h"
#include "support/temporary_store.h"
#include "tools/store/server_run.h"

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

/// A separate server, because roles are server-wide. It has a database for the store, its two
/// roles, and a store that the owner has moved there.
class ServerSetupTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ServerSql(linkAs(u"zomrel"_s, u"postgres"_s)).run(u"CREATE DATABASE store"_s);
        setUp();
        TemporaryStore store(TemporaryStore::Contents::Delivered);
        store.addOrder(1, true);
        store.addLine(1, 1);
        const Outcome moved =
            zomrelStore({u"move"_s, store.path(), addressOf(linkAs(u"zomrel_owner"_s))});
        ASSERT_EQ(moved.exitStatus, 0) << asText(moved.err);
        QFile link(path_);
        ASSERT_TRUE(link.open(QIODevice::WriteOnly));
        link.write(dao::linkText(linkAs(u"zomrel_station"_s)));
    }
    void TearDown() override { dao::DBEngine::instance().Idle(); }

    dao::Link linkAs(const QString& user, const QString& database = u"store"_s) const
    {
        return {server_.folder(), server_.port(), database, user, u"disable"_s};
    }
    void setUp() const
    {
        const Outcome setup = zomrelStore({u"server-setup"_s});
        EXPECT_EQ(setup.exitStatus, 0);
        ServerSql(linkAs(u"zomrel"_s)).run(setup.out.join(u'\n'));
    }
    /// Returns all roles and privileges in the server's catalogue.
    QList<QVariantList> rights() const
    {
        ServerSql keeper(linkAs(u"zomrel"_s));
        return keeper.rows(u"SELECT datacl::text, '' FROM pg_database WHERE datname = 'store' "
                           "UNION ALL SELECT nspacl::text, '' FROM pg_namespace "
                           "WHERE nspname = 'public' "
                           "UNION ALL SELECT defaclacl::text, defaclobjtype::text "
                           "FROM pg_default_acl "
                           "UNION ALL SELECT rolname::text, rolcanlogin::text FROM pg_roles "
                           "UNION ALL SELECT relacl::text, relname::text FROM pg_class "
                           "WHERE relnamespace = 'public'::regnamespace "
                           "ORDER BY 2, 1"_s);
    }

    std::shared_ptr<dao::Recordset> table(const QString& name) const
    {
        return store::OpenMyDataBase()->OpenRecordset(name, dao::dbOpenTable);
    }

    ThrowawayServer server_;
    QTemporaryDir folder_;
    QString path_ = folder_.filePath(u"Aluminium.mdb"_s);
};

} // namespace

TEST_F(ServerSetupTest, SecondSetupChangesNothing)
{
    const QList<QVariantList> before = rights();
    ASSERT_GT(before.size(), 20);
    setUp();
    EXPECT_EQ(rights(), before);
}

TEST_F(ServerSetupTest, StationRoleCanUseTheProgram)
{
    Module1::StorePath = path_;
    store::BuildOrdersTable(path_);

    auto orders = table(u"Orders"_s);
    orders->AddNew();
    orders->Fields(u"Number"_s).SetValue(2);
    orders->Fields(u"Order_Date"_s).SetValue(u"2026-03-01"_s);
    orders->Update();

    auto lines = store::OpenMyDataBase()->OpenRecordset(
        u"SELECT * FROM Cuts WHERE Order_Num = 2 ORDER BY NUM"_s, dao::dbOpenDynaset);
    for (const int number : {1, 2}) {
        lines->AddNew();
        lines->Fields(u"Order_Num"_s).SetValue(2);
        lines->Fields(u"NUM"_s).SetValue(number);
        lines->Update();
    }
    lines->MoveFirst();
    EXPECT_EQ(lines->Fields(u"Code"_s).Value(), 2);
    lines->Delete();
    lines->MoveNext();
    lines->Edit();
    lines->Fields(u"NUM"_s).SetValue(1);
    lines->Update();
    EXPECT_EQ(lines->Fields(u"Code"_s).Value(), 3);

    for (const QString& name : {u"Serials"_s, u"GlassKind"_s, u"KanafColor"_s}) {
        auto catalogue = table(name);
        catalogue->AddNew();
        catalogue->Fields(u"Name"_s).SetValue(u"חדש"_s);
        catalogue->Update();
        catalogue->MoveLast();
        const int given = catalogue->Fields(0).Value().toInt();
        catalogue->Edit();
        catalogue->Fields(u"Name"_s).SetValue(u"אחר"_s);
        catalogue->Update();
        catalogue->Delete();
        catalogue->AddNew();
        catalogue->Fields(u"Name"_s).SetValue(u"עוד"_s);
        catalogue->Update();
        catalogue->MoveLast();
        EXPECT_EQ(catalogue->Fields(0).Value(), given + 1);
        // An assigned number moves the counter.
        catalogue->AddNew();
        catalogue->Fields(0).SetValue(given + 100);
        catalogue->Update();
        catalogue->AddNew();
        catalogue->Update();
        catalogue->MoveLast();
        EXPECT_EQ(catalogue->Fields(0).Value(), given + 101);
    }
    orders->MoveLast();
    orders->Edit();
    orders->Fields(u"Open_Close"_s).SetValue(true);
    orders->Update();
    orders->Delete();
}

TEST_F(ServerSetupTest, StationRoleCannotChangeTheStructure)
{
    ServerSql station(linkAs(u"zomrel_station"_s));
    for (const QString& sql :
         {u"CREATE TABLE mine (x integer)"_s, u"CREATE TEMP TABLE mine (x integer)"_s,
          u"CREATE SCHEMA mine"_s, u"CREATE VIEW mine AS SELECT 1"_s,
          u"CREATE FUNCTION mine() RETURNS integer LANGUAGE sql AS 'SELECT 1'"_s,
          u"ALTER TABLE \"Orders\" ADD COLUMN x integer"_s,
          u"ALTER TABLE \"Orders\" DROP COLUMN \"CustomerTel\""_s, u"DROP TABLE \"Cuts\""_s,
          u"TRUNCATE \"Cuts\""_s, u"CREATE INDEX ON \"Cuts\" (\"NUM\")"_s,
          u"DROP INDEX \"Cuts.Order_Num\""_s, u"DROP TRIGGER zomrel_counter ON \"Cuts\""_s,
          u"CREATE OR REPLACE FUNCTION zomrel_count() RETURNS trigger LANGUAGE plpgsql AS "
          "'BEGIN RETURN NULL; END'"_s,
          u"SELECT setval(pg_get_serial_sequence('\"Cuts\"', 'Code'), 1)"_s,
          u"SELECT nextval(pg_get_serial_sequence('\"Cuts\"', 'Code'))"_s, u"CREATE ROLE mine"_s,
          u"SET ROLE zomrel_owner"_s})
        EXPECT_EQ(station.errorOf(sql), insufficientPrivilege) << sql.toStdString();
    // The role owns nothing that it could grant. The server only issues a warning about that.
    station.errorOf(u"GRANT SELECT ON \"Cuts\" TO PUBLIC"_s);
    EXPECT_EQ(station.scalar(u"SELECT count(*) FROM pg_class WHERE relname = 'Cuts' AND "
                             "relacl::text LIKE '%,=r%'"_s),
              0);
}

TEST_F(ServerSetupTest, OtherRolesHaveNoAccess)
{
    ServerSql(linkAs(u"zomrel"_s)).run(u"CREATE ROLE stranger LOGIN"_s);
    const Outcome outcome = zomrelStore({u"check"_s, addressOf(linkAs(u"stranger"_s))});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_TRUE(outcome.out.value(0).contains(u"permission denied for database"_s))
        << asText(outcome.out);
    // A user's own role can act as a station.
    ServerSql(linkAs(u"zomrel"_s)).run(u"GRANT zomrel_station TO stranger"_s);
    EXPECT_EQ(zomrelStore({u"check"_s, addressOf(linkAs(u"stranger"_s))}).exitStatus, 0);
}

TEST_F(ServerSetupTest, StationRoleCanCheckAndBackUp)
{
    EXPECT_EQ(zomrelStore({u"check"_s, path_}).exitStatus, 0);
    const QString copy = folder_.filePath(u"copy.mdb"_s);
    const Outcome backedUp = zomrelStore({u"backup"_s, path_, copy});
    EXPECT_EQ(backedUp.exitStatus, 0) << asText(backedUp.err);
    // Restoring requires the owner's role.
    EXPECT_EQ(zomrelStore({u"restore"_s, copy, path_}).exitStatus, 1);
    const Outcome restored =
        zomrelStore({u"restore"_s, copy, addressOf(linkAs(u"zomrel_owner"_s))});
    EXPECT_EQ(restored.exitStatus, 0) << asText(restored.err);
    EXPECT_EQ(zomrelStore({u"check"_s, path_}).exitStatus, 0);
    Module1::StorePath = path_;
    auto kinds = table(u"GlassKind"_s);
    kinds->AddNew();
    kinds->Update();
}

/// The owners and rights of the store's tables, counters and functions.
const QString ownersAndRights = QStringLiteral(
    "SELECT relname::text, relkind::text, pg_get_userbyid(relowner)::text, "
    "(SELECT string_agg(a::text, ' ' ORDER BY a::text) FROM unnest(relacl) AS a) FROM pg_class "
    "WHERE relnamespace = 'public'::regnamespace "
    "UNION ALL SELECT proname::text, 'f', pg_get_userbyid(proowner)::text, '' FROM pg_proc "
    "WHERE pronamespace = 'public'::regnamespace ORDER BY 1, 2");

TEST_F(ServerSetupTest, RestoreAsSuperuser_keepsOwnersAndRights)
{
    ServerSql keeper(linkAs(u"zomrel"_s));
    keeper.run(u"CREATE ROLE reader; GRANT SELECT ON \"Cuts\" TO reader WITH GRANT OPTION"_s);
    const QList<QVariantList> before = keeper.rows(ownersAndRights);
    ASSERT_GT(before.size(), 30);
    const QString backup = folder_.filePath(u"backup.mdb"_s);
    const QString superuser = addressOf(linkAs(u"zomrel"_s));
    ASSERT_EQ(zomrelStore({u"backup"_s, superuser, backup}).exitStatus, 0);
    const Outcome restored = zomrelStore({u"restore"_s, backup, superuser});
    ASSERT_EQ(restored.exitStatus, 0) << asText(restored.err);
    EXPECT_EQ(keeper.rows(ownersAndRights), before);
    ServerSql station(linkAs(u"zomrel_station"_s));
    station.run(u"INSERT INTO \"Cuts\" (\"Order_Num\") VALUES (1)"_s);
    EXPECT_EQ(station.scalar(u"SELECT max(\"Code\") FROM \"Cuts\""_s), 2);
}

TEST_F(ServerSetupTest, RestoreAsSuperuserIntoAnEmptyDatabase_servesStations)
{
    ServerSql keeper(linkAs(u"zomrel"_s));
    const QList<QVariantList> before = keeper.rows(ownersAndRights);
    const QString backup = folder_.filePath(u"backup.mdb"_s);
    const QString superuser = addressOf(linkAs(u"zomrel"_s));
    ASSERT_EQ(zomrelStore({u"backup"_s, superuser, backup}).exitStatus, 0);
    keeper.run(u"DROP OWNED BY zomrel_owner CASCADE"_s);
    setUp();
    const Outcome restored = zomrelStore({u"restore"_s, backup, superuser});
    ASSERT_EQ(restored.exitStatus, 0) << asText(restored.err);
    EXPECT_EQ(keeper.rows(ownersAndRights), before);
}
