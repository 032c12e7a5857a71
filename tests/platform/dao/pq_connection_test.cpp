// Tests the layer over libpq: parameters, deadlines and copying.

#include "platform/dao/postgres/pq_connection.h"
#include "platform/dao/server_fixture.h"
#include "support/server_proxy.h"

#include <QElapsedTimer>

using namespace daotest;
using dao::postgres::PqConnection;

namespace {

class PqConnectionTest : public ServerTest
{
protected:
    static constexpr dao::Timeouts usual{};
    static constexpr dao::Timeouts brief{std::chrono::seconds(1), std::chrono::seconds(3)};

    dao::Link linkThrough(const testsupport::ServerProxy& proxy) const
    {
        dao::Link through = link();
        through.server = u"127.0.0.1"_s;
        through.port = proxy.port();
        return through;
    }

    /// Expects that the action throws CallFailed (3146) for a missing answer within a short time.
    void expectNoAnswer(PqConnection& connection, const std::function<void()>& action)
    {
        QElapsedTimer clock;
        clock.start();
        const Failure failure = failureOf(action);
        EXPECT_EQ(failure.number, 3146);
        EXPECT_TRUE(failure.text.contains(u"no answer within 3 s"_s)) << qPrintable(failure.text);
        EXPECT_LT(clock.elapsed(), 30000);
        EXPECT_TRUE(connection.isLost());
    }

    static constexpr auto manyRows = "COPY (SELECT generate_series(1, 2000000)) TO STDOUT";
};

TEST_F(PqConnectionTest, valuesWithAnyContents_arriveUnchanged)
{
    PqConnection connection(link(), usual);
    const QString odd = u"it's \"odd\" $1 ? -- \\ שלום"_s;
    const dao::Answer answer = connection.execute(
        u"SELECT $1::text, $2::bigint, $3::numeric, $4::text, $5::boolean, $6::text"_s,
        {odd, -5000000000LL, 0.1, QVariant(), u"t"_s, u""_s});
    const dao::StoredValues expected{odd, -5000000000LL, 0.1, QVariant(), true, u""_s};
    EXPECT_EQ(answer.rows, std::vector<dao::StoredValues>{expected});
}

TEST_F(PqConnectionTest, textWithAZeroCharacter_isRefused)
{
    PqConnection connection(link(), usual);
    EXPECT_EQ(errorOf([&] { connection.execute(u"SELECT $1"_s, {QString(QChar(u'\0'))}); }), 3421);
    EXPECT_EQ(errorOf([&] { connection.execute(u"SELECT 1"_s); }), 0);
}

TEST_F(PqConnectionTest, statementThatChangesRows_returnsTheirNumber)
{
    add(1, 10);
    add(2, 10);
    add(3, 30);
    PqConnection connection(link(), usual);
    EXPECT_EQ(connection.execute(u"UPDATE \"Items\" SET \"Num\" = 11 WHERE \"Num\" = $1"_s, {10})
                  .affected,
              2);
}

TEST_F(PqConnectionTest, noAnswerInTime_connectionIsClosed)
{
    testsupport::ServerProxy proxy(link().port);
    PqConnection connection(linkThrough(proxy), brief);
    proxy.stallAfter(0);
    expectNoAnswer(connection, [&] { connection.execute(u"SELECT 1"_s); });
    proxy.cut();
}

TEST_F(PqConnectionTest, stallWhileReadingACopy_connectionIsClosed)
{
    testsupport::ServerProxy proxy(link().port);
    PqConnection connection(linkThrough(proxy), brief);
    connection.startCopy(QString::fromLatin1(manyRows));
    ASSERT_EQ(connection.nextCopied()->toByteArray(), "1\n");
    proxy.stallAfter(2);
    expectNoAnswer(connection, [&] {
        while (connection.nextCopied())
            ;
    });
    proxy.cut();
}

TEST_F(PqConnectionTest, stallWhileWritingACopy_connectionIsClosed)
{
    testsupport::ServerProxy proxy(link().port);
    PqConnection connection(linkThrough(proxy), brief);
    connection.execute(u"CREATE TEMPORARY TABLE taken (t text)"_s);
    connection.startCopy(u"COPY taken FROM STDIN"_s);
    proxy.stallAfter(0);
    const QByteArray block = QByteArray(1 << 20, 'x') + '\n';
    expectNoAnswer(connection, [&] {
        for (int i = 0; i < 64; ++i)
            connection.sendCopied(block);
    });
    proxy.cut();
}

TEST_F(PqConnectionTest, connectionCutDuringAnAnswer_throwsCallFailed)
{
    testsupport::ServerProxy proxy(link().port);
    PqConnection connection(linkThrough(proxy), brief);
    proxy.cutAfter(1);
    const Failure failure = failureOf([&] { connection.execute(u"SELECT repeat('x', 1000)"_s); });
    EXPECT_EQ(failure.number, 3146);
    EXPECT_TRUE(failure.text.contains(u"server closed the connection"_s))
        << qPrintable(failure.text);
    EXPECT_TRUE(connection.isLost());
}

TEST_F(PqConnectionTest, connectionCutDuringACopy_throwsCallFailed)
{
    testsupport::ServerProxy proxy(link().port);
    PqConnection connection(linkThrough(proxy), usual);
    connection.startCopy(QString::fromLatin1(manyRows));
    ASSERT_EQ(connection.nextCopied()->toByteArray(), "1\n");
    proxy.cut();
    const Failure failure = failureOf([&] {
        while (connection.nextCopied())
            ;
    });
    EXPECT_EQ(failure.number, 3146);
    EXPECT_TRUE(connection.isLost());
}

TEST_F(PqConnectionTest, serverGivenByName_isLoggedInTo)
{
    dao::Link named = link();
    named.server = u"localhost"_s;
    PqConnection connection(named, usual);
    EXPECT_EQ(connection.execute(u"SELECT 1"_s).rows.front().front(), 1);
}

TEST_F(PqConnectionTest, unknownServerName_isPartOfTheError)
{
    dao::Link unknown = link();
    unknown.server = QString(100, u'x'); // A part of a host name may have at most 63 characters.
    const Failure failure = failureOf([&] { PqConnection connection(unknown, usual); });
    EXPECT_EQ(failure.number, 3151);
    EXPECT_TRUE(failure.text.contains(u"could not translate host name \"xxx"_s))
        << qPrintable(failure.text);
}

TEST_F(PqConnectionTest, copiedRows_areReadBack)
{
    PqConnection connection(link(), usual);
    connection.execute(u"CREATE TEMPORARY TABLE copied (n integer)"_s);
    connection.startCopy(u"COPY copied FROM STDIN"_s);
    connection.sendCopied("1\n2\n");
    connection.sendCopied("3\n");
    connection.endCopy();
    connection.startCopy(u"COPY (SELECT n * 10 FROM copied ORDER BY n) TO STDOUT"_s);
    QByteArray all;
    while (const std::optional<QByteArrayView> block = connection.nextCopied())
        all += *block;
    EXPECT_EQ(all, "10\n20\n30\n");
    EXPECT_EQ(connection.execute(u"SELECT count(*) FROM copied"_s).rows.front().front(), 3);
}

TEST_F(PqConnectionTest, refusedCopy_storesNoRow)
{
    PqConnection connection(link(), usual);
    connection.execute(u"CREATE TEMPORARY TABLE copied (n integer)"_s);
    connection.startCopy(u"COPY copied FROM STDIN"_s);
    connection.sendCopied("1\n");
    connection.endCopy("it cannot be read on");
    EXPECT_EQ(connection.execute(u"SELECT count(*) FROM copied"_s).rows.front().front(), 0);
}

TEST_F(PqConnectionTest, invalidCopiedRow_isNamedInTheError)
{
    PqConnection connection(link(), usual);
    connection.execute(u"CREATE TEMPORARY TABLE copied (n integer)"_s);
    connection.startCopy(u"COPY copied FROM STDIN"_s);
    connection.sendCopied("1\nx\n");
    const Failure failure = failureOf([&] { connection.endCopy(); });
    EXPECT_EQ(failure.number, 3421);
    EXPECT_FALSE(connection.isLost());
    EXPECT_EQ(errorOf([&] { connection.startCopy(u"COPY nothing TO STDOUT"_s); }), 3078);
}

} // namespace
