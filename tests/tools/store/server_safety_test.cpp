// Tests of servers whose settings may lose or damage stored rows.

#include "platform/dao/database.h"
#include "support/temporary_store.h"
#include "tools/store/server_run.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using storetooltest::addressOf;
using storetooltest::asText;
using storetooltest::Outcome;
using storetooltest::ServerSql;
using storetooltest::zomrelStoreUnforced;
using testsupport::TemporaryStore;
using testsupport::ThrowawayServer;

namespace {

const QString fsyncIsOff = u"fsync is off"_s;
const QString force = u"--force"_s;

class ServerSafetyTest : public testing::Test
{
protected:
    void TearDown() override { dao::DBEngine::instance().Idle(); }

    static dao::Link linkOn(const ThrowawayServer& server, const QString& database = u"postgres"_s)
    {
        return {server.folder(), server.port(), database, u"zomrel"_s, u"disable"_s};
    }
    QStringList linking(const dao::Link& link) const
    {
        return {u"link"_s,       path(),
                u"--server"_s,   u"%1:%2"_s.arg(link.server).arg(link.port),
                u"--database"_s, link.database,
                u"--user"_s,     link.user,
                u"--tls"_s,      link.tls};
    }
    QString path() const { return folder_.filePath(u"Aluminium.mdb"_s); }

    TemporaryStore store_{TemporaryStore::Contents::Delivered};
    QTemporaryDir folder_;
};

/// Expects exit status 1 and the reason in the output.
void expectRefusal(const Outcome& outcome, const QString& reason)
{
    EXPECT_EQ(outcome.exitStatus, 1);
    const QString all = (outcome.out + outcome.err).join(u'\n');
    EXPECT_TRUE(all.contains(reason)) << all.toStdString();
}

} // namespace

TEST_F(ServerSafetyTest, ServerWithoutFsync_isRefusedUnlessForced)
{
    const ThrowawayServer server;
    const dao::Link link = linkOn(server);
    const QString there = addressOf(link);
    expectRefusal(zomrelStoreUnforced(linking(link)), fsyncIsOff);
    EXPECT_FALSE(QFile::exists(path()));
    expectRefusal(zomrelStoreUnforced({u"move"_s, store_.path(), there}), fsyncIsOff);
    EXPECT_EQ(ServerSql(link).scalar(u"SELECT count(*) FROM pg_class WHERE relname = 'Orders'"_s),
              0);

    EXPECT_EQ(zomrelStoreUnforced(linking(link) + QStringList(force)).exitStatus, 0);
    const Outcome moved = zomrelStoreUnforced({u"move"_s, force, store_.path(), there});
    EXPECT_EQ(moved.exitStatus, 0) << asText(moved.err);
    const Outcome checked = zomrelStoreUnforced({u"check"_s, path()});
    EXPECT_EQ(checked.exitStatus, 1);
    EXPECT_EQ(checked.out.size(), 2) << asText(checked.out);
    expectRefusal(checked, u"server: "_s + fsyncIsOff);
    EXPECT_EQ(zomrelStoreUnforced({u"check"_s, force, path()}).exitStatus, 0);
}

TEST_F(ServerSafetyTest, DurableServerWithoutChecksums_isWarnedOf)
{
    const ThrowawayServer server(ThrowawayServer::Care::Durable);
    const dao::Link link = linkOn(server);
    const QString warning = u"zomrel-store: warning: server: data checksums are off, so damage on "
                            "the disk is not noticed"_s;
    const Outcome moved = zomrelStoreUnforced({u"move"_s, store_.path(), addressOf(link)});
    EXPECT_EQ(moved.exitStatus, 0) << asText(moved.err);
    EXPECT_EQ(moved.err, QStringList(warning));
    const Outcome linked = zomrelStoreUnforced(linking(link));
    EXPECT_EQ(linked.exitStatus, 0);
    EXPECT_EQ(linked.err, QStringList(warning));
    const Outcome checked = zomrelStoreUnforced({u"check"_s, path()});
    EXPECT_EQ(checked.exitStatus, 0) << asText(checked.out);
    EXPECT_EQ(checked.err, QStringList(warning));

    ServerSql(link).run(u"ALTER TABLE \"Cuts\" SET UNLOGGED"_s);
    expectRefusal(zomrelStoreUnforced({u"check"_s, path()}),
                  u"server: table 'Cuts' is unlogged, so a crash empties it"_s);
    expectRefusal(zomrelStoreUnforced(linking(link)), u"table 'Cuts' is unlogged"_s);
    EXPECT_EQ(zomrelStoreUnforced({u"check"_s, force, path()}).exitStatus, 0);
}
