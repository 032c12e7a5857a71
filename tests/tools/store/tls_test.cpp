// Links over encrypted connections to a server with a self-signed certificate.

#include "platform/dao/database.h"
#include "platform/dao/engine/session.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/server_run.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using storetooltest::asText;
using storetooltest::Outcome;
using storetooltest::zomrelStore;
using testsupport::ThrowawayServer;

namespace {

const QString address = u"127.0.0.1"_s;
/// Refers to the same server by a name that is not in the certificate.
const QString otherName = u"localhost"_s;
constexpr auto trusted = "PGSSLROOTCERT";

class TlsTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        server_ = std::make_unique<ThrowawayServer>();
        certificate_ = server_->certify();
    }
    static void TearDownTestSuite() { server_.reset(); }

    void SetUp() override { qputenv(trusted, QFile::encodeName(certificate_)); }
    void TearDown() override
    {
        dao::DBEngine::instance().Idle();
        qunsetenv(trusted);
    }

    dao::Link link(const QString& host, const QString& tls) const
    {
        return {host, server_->port(), u"postgres"_s, u"zomrel"_s, tls};
    }
    QString path() const { return folder_.filePath(u"Aluminium.mdb"_s); }
    Outcome laid(const dao::Link& link) const
    {
        return zomrelStore({u"link"_s, path(), u"--server"_s,
                            u"%1:%2"_s.arg(link.server).arg(link.port), u"--database"_s,
                            link.database, u"--user"_s, link.user, u"--tls"_s, link.tls});
    }
    /// Returns true if the engine's connection through the link is encrypted.
    bool isEncrypted() const
    {
        const auto database = dao::DBEngine::instance().OpenDatabase(path());
        return database->session()
            .rows(u"SELECT ssl FROM pg_stat_ssl WHERE pid = pg_backend_pid()"_s)
            .front()
            .front()
            .toBool();
    }
    /// Returns the error message of opening a store through this link.
    QString refusal(const dao::Link& link) const
    {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(dao::linkText(link));
        file.close();
        try {
            dao::DBEngine::instance().OpenDatabase(path());
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

TEST_F(TlsTest, TlsModeOfTheLinkIsUsed)
{
    for (const auto& [mode, encrypts] :
         {std::pair(u"disable"_s, false), std::pair(u"allow"_s, false),
          std::pair(u"prefer"_s, true), std::pair(u"require"_s, true),
          std::pair(u"verify-ca"_s, true), std::pair(u"verify-full"_s, true)}) {
        const Outcome outcome = laid(link(address, mode));
        EXPECT_EQ(outcome.exitStatus, 0) << asText(outcome.err);
        EXPECT_EQ(isEncrypted(), encrypts) << mode.toStdString();
    }
}

TEST_F(TlsTest, WrongHostNameIsRefused)
{
    const dao::Link wrong = link(otherName, u"verify-full"_s);
    const QString reason = u"does not match host name \"localhost\""_s;
    const Outcome outcome = laid(wrong);
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_TRUE(outcome.err.value(0).contains(wrong.place())) << asText(outcome.err);
    EXPECT_TRUE(outcome.err.value(0).contains(reason)) << asText(outcome.err);
    EXPECT_FALSE(QFile::exists(path()));
    const QString told = refusal(wrong);
    EXPECT_TRUE(told.contains(wrong.place())) << told.toStdString();
    EXPECT_TRUE(told.contains(reason)) << told.toStdString();
    EXPECT_EQ(laid(link(otherName, u"verify-ca"_s)).exitStatus, 0)
        << "verify-ca does not check the host name";
}

TEST_F(TlsTest, UntrustedCertificateIsRefused)
{
    qputenv(trusted, QFile::encodeName(folder_.filePath(u"none.crt"_s)));
    for (const QString& mode : {u"verify-ca"_s, u"verify-full"_s}) {
        const dao::Link unknown = link(address, mode);
        const QString told = refusal(unknown);
        EXPECT_TRUE(told.contains(unknown.place())) << told.toStdString();
        EXPECT_TRUE(told.contains(u"root certificate file"_s)) << told.toStdString();
    }
    EXPECT_EQ(laid(link(address, u"require"_s)).exitStatus, 0)
        << "require does not check the certificate";
}
