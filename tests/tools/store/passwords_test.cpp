// Tests of log-ins with a password, and of environment variables of the client library.

#include "platform/dao/database.h"
#include "platform/dao/engine/session.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/server_run.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using storetooltest::addressOf;
using storetooltest::ServerSql;
using storetooltest::zomrelStore;
using testsupport::ThrowawayServer;

namespace {

const QString address = u"127.0.0.1"_s;

/// A server with one role for each way to ask for a password, reachable with and without TLS.
class PasswordsTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        server_ = std::make_unique<ThrowawayServer>();
        certificate_ = server_->certify();
        ServerSql keeper(linkAs(u"zomrel"_s, server_->folder(), u"disable"_s));
        keeper.run(u"SET password_encryption = 'md5'"_s);
        keeper.run(u"CREATE ROLE digest LOGIN PASSWORD 'geheim'"_s);
        keeper.run(u"SET password_encryption = 'scram-sha-256'"_s);
        keeper.run(u"CREATE ROLE scram LOGIN PASSWORD 'geheim'"_s);
        keeper.run(u"CREATE ROLE readable LOGIN PASSWORD 'geheim'"_s);
        QFile rules(server_->folder() + u"/data/pg_hba.conf"_s);
        ASSERT_TRUE(rules.open(QIODevice::WriteOnly | QIODevice::Truncate));
        rules.write("local all zomrel trust\n"
                    "host all zomrel 127.0.0.1/32 trust\n"
                    "host all digest 127.0.0.1/32 md5\n"
                    "host all scram 127.0.0.1/32 scram-sha-256\n"
                    "host all readable 127.0.0.1/32 password\n");
        rules.close();
        server_->endAtOnce();
        server_->start();
    }
    static void TearDownTestSuite() { server_.reset(); }

    void SetUp() override
    {
        qputenv("PGSSLROOTCERT", QFile::encodeName(certificate_));
        writePasswords("geheim");
        qputenv("PGPASSFILE", QFile::encodeName(folder_.filePath(u"passwords"_s)));
    }
    void TearDown() override
    {
        dao::DBEngine::instance().Idle();
        for (const char* each : {"PGSSLROOTCERT", "PGPASSFILE"})
            qunsetenv(each);
    }

    static dao::Link linkAs(const QString& user, const QString& host, const QString& tls)
    {
        return {host, server_->port(), u"postgres"_s, user, tls};
    }

    void writePasswords(const QByteArray& password)
    {
        QFile file(folder_.filePath(u"passwords"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("127.0.0.1:*:*:*:" + password + '\n');
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    }

    std::shared_ptr<dao::Database> open(const dao::Link& link)
    {
        const QString path = folder_.filePath(u"Aluminium.mdb"_s);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(dao::linkText(link));
        file.close();
        return dao::DBEngine::instance().OpenDatabase(path);
    }
    /// Returns the error message of the log-in, or an empty text.
    QString refusal(const dao::Link& link)
    {
        try {
            open(link);
        } catch (const runtime::RunTimeError& error) {
            EXPECT_EQ(error.number(), 3151);
            return error.description();
        }
        return {};
    }

    static inline std::unique_ptr<ThrowawayServer> server_;
    static inline QString certificate_;
    QTemporaryDir folder_;
};

} // namespace

TEST_F(PasswordsTest, Scram_logsInWithAndWithoutTls)
{
    for (const QString& tls :
         {u"disable"_s, u"allow"_s, u"prefer"_s, u"require"_s, u"verify-ca"_s, u"verify-full"_s})
        EXPECT_EQ(refusal(linkAs(u"scram"_s, address, tls)), QString()) << tls.toStdString();
}

TEST_F(PasswordsTest, ClearTextAndMd5_areRefusedWithAndWithoutTls)
{
    for (const QString& user : {u"readable"_s, u"digest"_s}) {
        for (const QString& tls : {u"disable"_s, u"prefer"_s, u"require"_s, u"verify-full"_s}) {
            const QString told = refusal(linkAs(user, address, tls));
            EXPECT_TRUE(told.contains(u"scram-sha-256"_s))
                << user.toStdString() << ' ' << tls.toStdString() << ": " << told.toStdString();
        }
    }
}

TEST_F(PasswordsTest, WrongPassword_isRefused)
{
    writePasswords("falsch");
    for (const QString& tls : {u"disable"_s, u"verify-full"_s}) {
        const QString told = refusal(linkAs(u"scram"_s, address, tls));
        EXPECT_TRUE(told.contains(u"password authentication failed"_s)) << told.toStdString();
    }
}

TEST_F(PasswordsTest, MissingPassword_isRefused)
{
    qputenv("PGPASSFILE", QFile::encodeName(folder_.filePath(u"absent"_s)));
    const QString told = refusal(linkAs(u"scram"_s, address, u"verify-full"_s));
    EXPECT_TRUE(told.contains(u"no password supplied"_s)) << told.toStdString();
}

TEST_F(PasswordsTest, PasswordOfTheEnvironment_isUsed)
{
    qputenv("PGPASSFILE", QFile::encodeName(folder_.filePath(u"absent"_s)));
    qputenv("PGPASSWORD", "geheim");
    const QString place = addressOf(linkAs(u"scram"_s, address, u"verify-full"_s));
    EXPECT_EQ(zomrelStore({u"check"_s, place}).out.size(), 11) << "one finding for each table";
    EXPECT_TRUE(zomrelStore({u"check"_s, addressOf(linkAs(u"readable"_s, address, u"disable"_s))})
                    .out.value(0)
                    .contains(u"scram-sha-256"_s));
    qunsetenv("PGPASSWORD");
}

/// The variable would change the server, the log-in or the settings of the session.
TEST_F(PasswordsTest, VariablesOfTheEnvironment_doNotOverrideTheLink)
{
    for (const auto& [name, value] :
         std::vector<std::pair<const char*, QByteArray>>{{"PGHOST", "192.0.2.1"},
                                                         {"PGHOSTADDR", "192.0.2.1"},
                                                         {"PGPORT", "1"},
                                                         {"PGDATABASE", "absent"},
                                                         {"PGUSER", "absent"},
                                                         {"PGSERVICE", "absent"},
                                                         {"PGSERVICEFILE", "/absent"},
                                                         {"PGSSLMODE", "disable"},
                                                         {"PGCHANNELBINDING", "require"},
                                                         {"PGGSSENCMODE", "require"},
                                                         {"PGTARGETSESSIONATTRS", "standby"},
                                                         {"PGOPTIONS", "-c absent=on"},
                                                         {"PGDATESTYLE", "German"},
                                                         {"PGTZ", "Asia/Tokyo"},
                                                         {"PGCLIENTENCODING", "LATIN1"}}) {
        qputenv(name, value);
        for (const dao::Link& link : {linkAs(u"zomrel"_s, server_->folder(), u"prefer"_s),
                                      linkAs(u"scram"_s, address, u"verify-full"_s)}) {
            dao::DBEngine::instance().Idle();
            const auto database = open(link);
            const dao::StoredValues row =
                database->session()
                    .rows(u"SELECT session_user, current_setting('DateStyle'), "
                          "current_setting('client_encoding'), current_setting('TimeZone'), "
                          "(SELECT ssl FROM pg_stat_ssl WHERE pid = pg_backend_pid())"_s)
                    .front();
            EXPECT_EQ(row[0], link.user) << name;
            EXPECT_TRUE(row[1].toString().startsWith(u"ISO"_s)) << name;
            EXPECT_EQ(row[2], u"UTF8"_s) << name;
            EXPECT_NE(row[3], u"Asia/Tokyo"_s) << name;
            EXPECT_EQ(row[4].toBool(), link.server == address) << name;
        }
        EXPECT_FALSE(qEnvironmentVariableIsSet(name));
    }
}
