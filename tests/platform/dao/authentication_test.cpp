// Tests of servers that ask for the password in a form that others can read.

#include "platform/dao/postgres/pq_authentication.h"
#include "platform/dao/postgres/pq_connection.h"
#include "platform/dao/server_fixture.h"

#include <QtEndian>

#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

using namespace daotest;
using dao::postgres::PasswordRequest;
using dao::postgres::passwordRequestIn;

namespace {

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// Returns an authentication request of the protocol.
QByteArray request(quint32 kind, const QByteArray& rest = {})
{
    return 'R' + bigEndian(8 + quint32(rest.size())) + bigEndian(kind) + rest;
}

const QByteArray clearText = request(3);
const QByteArray md5 = request(5, "salt");
const QByteArray scram = request(10, QByteArray("SCRAM-SHA-256\0\0", 15));
const QByteArray accepted = request(0);
const QByteArray setting = 'S' + bigEndian(8) + QByteArray("a\0b\0", 4);

TEST(AuthenticationTest, RequestsForAReadablePassword_areFound)
{
    for (const QByteArray& messages :
         {clearText, md5, setting + clearText, scram + clearText, scram + md5, accepted + md5})
        EXPECT_EQ(passwordRequestIn(messages), PasswordRequest::Readable)
            << messages.toHex().constData();
}

TEST(AuthenticationTest, OtherMessages_areNoSuchRequest)
{
    for (const QByteArray& messages :
         {QByteArray(), scram, accepted, accepted + setting, setting, setting.left(3),
          setting.left(7), QByteArray("E\0\0\0\0", 5), QByteArray("R\0\0\0\1\0\0\0\1", 9)})
        EXPECT_EQ(passwordRequestIn(messages), PasswordRequest::None)
            << messages.toHex().constData();
}

TEST(AuthenticationTest, BeginningOfARequest_isIncomplete)
{
    for (qsizetype length = 1; length < clearText.size(); ++length) {
        EXPECT_EQ(passwordRequestIn(clearText.left(length)), PasswordRequest::Incomplete);
        EXPECT_EQ(passwordRequestIn(setting + clearText.left(length)), PasswordRequest::Incomplete);
    }
}

/// A server that sends these messages one after another, each once the client has sent something,
/// and records what the client sends after its first message.
class AskingServer
{
public:
    explicit AskingServer(std::vector<QByteArray> messages)
        : messages_(std::move(messages)), listener_(socket(AF_INET, SOCK_STREAM, 0))
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
        thread_ = std::thread([this] { serve(); });
    }
    ~AskingServer() { end(); }
    AskingServer(const AskingServer&) = delete;
    AskingServer& operator=(const AskingServer&) = delete;

    int port() const { return port_; }
    int connections() const { return connections_; }
    /// Ends the server and returns what all clients have sent after their first message.
    QByteArray received()
    {
        end();
        return received_;
    }

private:
    void serve()
    {
        for (;;) {
            const int client = accept(listener_, nullptr, nullptr);
            if (client < 0)
                return;
            ++connections_;
            talk(client);
            close(client);
        }
    }

    void talk(int client)
    {
        char bytes[4096];
        for (std::size_t i = 0;; ++i) {
            const ssize_t count = recv(client, bytes, sizeof(bytes), 0);
            if (count <= 0)
                return;
            if (i > 0)
                received_.append(bytes, count);
            if (i < messages_.size())
                send(client, messages_[i].constData(), std::size_t(messages_[i].size()),
                     MSG_NOSIGNAL);
        }
    }

    void end()
    {
        if (!thread_.joinable())
            return;
        shutdown(listener_, SHUT_RDWR);
        thread_.join();
        close(listener_);
    }

    std::vector<QByteArray> messages_;
    int listener_;
    int port_ = 0;
    int connections_ = 0;
    QByteArray received_;
    std::thread thread_;
};

class AskingServerTest : public ServerTest
{
protected:
    void SetUp() override
    {
        ServerTest::SetUp();
        if (!isOnServer())
            return;
        const QString path = folder_.filePath(u"passwords"_s);
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("*:*:*:*:geheim\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        qputenv("PGPASSFILE", path.toLocal8Bit());
    }
    void TearDown() override
    {
        qunsetenv("PGPASSFILE");
        ServerTest::TearDown();
    }

    Failure logIn(const AskingServer& server)
    {
        dao::Link asking = link();
        asking.server = u"127.0.0.1"_s;
        asking.port = server.port();
        return failureOf([&] { dao::postgres::PqConnection(asking, dao::Timeouts()); });
    }
};

TEST_F(AskingServerTest, ReadablePassword_isNotSent)
{
    for (const QByteArray& asked : {clearText, md5, scram + clearText}) {
        AskingServer server({asked});
        const Failure failure = logIn(server);
        EXPECT_EQ(failure.number, 3151);
        EXPECT_TRUE(failure.text.contains(u"scram-sha-256"_s)) << qPrintable(failure.text);
        EXPECT_EQ(server.received(), QByteArray());
        EXPECT_EQ(server.connections(), 2) << "without and with the password";
    }
}

TEST_F(AskingServerTest, ReadablePasswordAfterTheBeginningOfScram_isNotSent)
{
    for (const QByteArray& asked : {clearText, md5}) {
        AskingServer server({scram, asked});
        const Failure failure = logIn(server);
        EXPECT_EQ(failure.number, 3151);
        EXPECT_TRUE(failure.text.contains(u"scram-sha-256"_s)) << qPrintable(failure.text);
        const QByteArray received = server.received();
        EXPECT_TRUE(received.contains("SCRAM-SHA-256")) << "the guard must not stop SCRAM itself";
        ASSERT_GT(received.size(), 5);
        EXPECT_EQ(received.size(), 1 + qFromBigEndian<qint32>(received.constData() + 1))
            << "one message of the client";
        EXPECT_FALSE(received.contains("geheim"));
    }
}

} // namespace
