#include "platform/dao/engine/link.h"

#include "platform/runtime/run_time_error.h"
#include "support/printers.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray whole("Zomrel store link 1\n"
                       "server = db.workshop.example\n"
                       "port = 5433\n"
                       "database = zomrel\n"
                       "user = station\n"
                       "tls = verify-full\n");

/// Returns the error text of the parser, or an empty text for a valid link.
QString refusal(const QByteArray& text)
{
    try {
        dao::parseLink(text, u"/here/Aluminium.mdb"_s);
    } catch (const runtime::RunTimeError& error) {
        EXPECT_EQ(error.number(), 3343);
        EXPECT_TRUE(
            error.description().startsWith(u"The store link '/here/Aluminium.mdb' is damaged: "_s));
        return error.description().section(u": "_s, 1);
    }
    return {};
}

QByteArray changed(const QByteArray& from, const QByteArray& to)
{
    QByteArray text = whole;
    return text.replace(from, to);
}

TEST(LinkTest, fiveKeysInAnyOrder_areRead)
{
    const dao::Link expected{u"db.workshop.example"_s, 5433, u"zomrel"_s, u"station"_s,
                             u"verify-full"_s};
    EXPECT_TRUE(dao::parseLink(whole, {}) == expected);
    const QByteArray turned("Zomrel store link 1\r\n\r\n  tls=verify-full \r\nuser =station\r\n"
                            "database= zomrel\r\nport\t=\t5433\r\nserver = db.workshop.example");
    EXPECT_TRUE(dao::parseLink(turned, {}) == expected);
    EXPECT_TRUE(dao::parseLink("\xef\xbb\xbf" + whole, {}) == expected);
}

TEST(LinkTest, linkText_isReadBackAsTheSameLink)
{
    for (const dao::Link& link :
         {dao::Link{u"localhost"_s, 1, u"z"_s, u"u"_s, u"disable"_s},
          dao::Link{u"/var/run/postgresql"_s, 65535, u"אלומיניום = 1"_s, u"a b"_s, u"require"_s},
          dao::Link{u"fe80::1"_s, 5432, u"it's \\ \"x\""_s, u"ü"_s, u"verify-ca"_s}})
        EXPECT_TRUE(dao::parseLink(dao::linkText(link), {}) == link) << qPrintable(link.server);
    EXPECT_EQ(dao::linkText(dao::parseLink(whole, {})), whole);
}

TEST(LinkTest, valueThatALinkCannotContain_isNotWritten)
{
    const dao::Link good{u"h"_s, 5432, u"d"_s, u"u"_s, u"prefer"_s};
    const auto refuses = [](const dao::Link& link) {
        try {
            dao::linkText(link);
        } catch (const runtime::RunTimeError& error) {
            return error.number() == 3343;
        }
        return false;
    };
    EXPECT_FALSE(refuses(good));
    for (const auto change :
         {+[](dao::Link& link) { link.server.clear(); },
          +[](dao::Link& link) { link.server = u"a\nuser = b"_s; },
          +[](dao::Link& link) { link.server = u"one,two"_s; },
          +[](dao::Link& link) { link.database = u" d"_s; },
          +[](dao::Link& link) { link.user = QString(256, u'u'); },
          +[](dao::Link& link) { link.port = 0; }, +[](dao::Link& link) { link.port = 65536; },
          +[](dao::Link& link) { link.tls = u"strong"_s; }}) {
        dao::Link link = good;
        change(link);
        EXPECT_TRUE(refuses(link));
    }
}

TEST(LinkTest, defaultTlsMode_verifiesEveryServerThatIsNotLocal)
{
    for (const QString& local : {u"/run/postgresql"_s, u"@abstract"_s, u"localhost"_s, u"::1"_s,
                                 u"127.0.0.1"_s, u"127.9.8.7"_s})
        EXPECT_EQ(dao::defaultTlsMode(local), u"prefer"_s) << qPrintable(local);
    for (const QString& remote :
         {u"server"_s, u"192.168.1.2"_s, u"127.0.0.1.example.org"_s, u"localhost.example.org"_s,
          u"127server"_s, u"fe80::1"_s, u"10.127.0.1"_s})
        EXPECT_EQ(dao::defaultTlsMode(remote), u"verify-full"_s) << qPrintable(remote);
}

TEST(LinkTest, damagedText_isRefusedWithTheReason)
{
    const std::vector<std::pair<QByteArray, QString>> cases = {
        {changed("link 1\n", "link 2\n"), u"its first line is another one."_s},
        {changed("port = 5433\n", ""), u"'port' is missing."_s},
        {changed("tls = verify-full\n", ""), u"'tls' is missing."_s},
        {changed("server = db.workshop.example\n", ""), u"'server' is missing."_s},
        {changed("tls", "ssl"), u"line 6 has the unknown key 'ssl'."_s},
        {changed("user", "User"), u"line 5 has the unknown key 'User'."_s},
        {whole + "user = other\n", u"line 7 says 'user' again."_s},
        {whole + "password = secret\n",
         u"line 7 holds a password, which has no place in a link."_s},
        {whole + "PASSWORD=secret\n", u"line 7 holds a password, which has no place in a link."_s},
        {whole + "and more\n", u"line 7 is no 'key = value'."_s},
        {whole + "= x\n", u"line 7 has the unknown key ''."_s},
        {changed("station", ""), u"'user' has no value."_s},
        {changed("db.workshop.example", "one,two"), u"'server' names more than one server."_s},
        {changed("station", QByteArray(256, 'u')), u"the value of 'user' is too long."_s},
        {changed("station", "sta\x01tion"),
         u"the value of 'user' has a sign that does not print."_s},
        {changed("station", QByteArray("s\0t", 3)),
         u"the value of 'user' has a sign that does not print."_s},
        {changed("verify-full", "Require"), u"'Require' is no TLS mode."_s},
        {changed("station", "\xd7"), u"it is no UTF-8 text."_s},
        {whole + QByteArray(4096, '\n'), u"it is too long."_s},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(refusal(text), expected);
    for (const char* const port :
         {"0", "65536", "-1", "5433x", "5 433", "0x10", "99999999999", "٥"})
        EXPECT_EQ(refusal(changed("5433", QByteArray(port))),
                  u"'%1' is no port."_s.arg(QString::fromUtf8(port)));
}

TEST(LinkTest, addressWithAZone_isNamedWhole)
{
    dao::Link link = dao::parseLink(whole, {});
    link.server = u"fe80::1%2"_s;
    EXPECT_EQ(link.place(), u"database 'zomrel' on server '[fe80::1%2]:5433'"_s);
}

TEST(LinkTest, nameOfAFile_isReadAsItWasWritten)
{
    const QString path = u"/srv/סדנה משותפת/Aluminium.mdb"_s;
    const QByteArray text = "Zomrel store link 1\nfile = " + path.toUtf8() + '\n';
    const dao::Link link = dao::parseLink(text, {});
    EXPECT_TRUE(link.namesFile());
    EXPECT_EQ(link.file, path);
    EXPECT_EQ(link.place(), u"file '%1'"_s.arg(path));
    EXPECT_EQ(dao::linkText(dao::Link::toFile(path)), text);
    EXPECT_FALSE(dao::parseLink(whole, {}).namesFile());
    const QString longPath = u'/' + QString(1000, u'p');
    EXPECT_EQ(dao::parseLink(dao::linkText(dao::Link::toFile(longPath)), {}).file, longPath);
}

TEST(LinkTest, fileThatCannotBeNamed_isRefusedWithTheReason)
{
    const QByteArray first("Zomrel store link 1\n");
    const std::vector<std::pair<QByteArray, QString>> cases = {
        {"file = store/Aluminium.mdb\n", u"'store/Aluminium.mdb' is no absolute path."_s},
        {"file = ../Aluminium.mdb\n", u"'../Aluminium.mdb' is no absolute path."_s},
        {"file =\n", u"'file' has no value."_s},
        {"file = /a\nfile = /b\n", u"line 3 says 'file' again."_s},
        {"file = /a\nserver = h\n", u"'file' and 'server' exclude each other."_s},
        {"tls = prefer\nfile = /a\n", u"'file' and 'tls' exclude each other."_s},
        {"file = /a\x01\n", u"the value of 'file' has a sign that does not print."_s},
        {"File = /a\n", u"line 2 has the unknown key 'File'."_s},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(refusal(first + text), expected);
    EXPECT_EQ(refusal(whole + "file = /a\n"), u"'file' and 'server' exclude each other."_s);
    EXPECT_THROW(dao::linkText(dao::Link::toFile(u"Aluminium.mdb"_s)), runtime::RunTimeError);
}

TEST(LinkTest, textCutAtAnyPlace_isRefused)
{
    for (qsizetype length = 0; length < whole.size() - 1; ++length)
        EXPECT_FALSE(refusal(whole.first(length)).isEmpty()) << length;
}

class LinkFileTest : public testing::Test
{
protected:
    void write(const QByteArray& contents)
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(contents), contents.size());
    }
    QString path() const { return folder_.filePath(u"Aluminium.mdb"_s); }

    QTemporaryDir folder_;
};

TEST_F(LinkFileTest, fileWithTheFirstLine_isALink)
{
    EXPECT_FALSE(dao::linkAt(path()).has_value()) << "no file";
    for (const QByteArray& other :
         {QByteArray(), QByteArray("SQLite format 3\0", 16), QByteArray("Zomrel"),
          QByteArray("\n") + whole, QByteArray(100, '\0')}) {
        write(other);
        EXPECT_FALSE(dao::linkAt(path()).has_value()) << other.constData();
        EXPECT_FALSE(dao::beginsAsLink(path()));
    }
    write(whole);
    ASSERT_TRUE(dao::linkAt(path()).has_value());
    EXPECT_EQ(dao::linkAt(path())->place(),
              u"database 'zomrel' on server 'db.workshop.example:5433'"_s);
    write(whole + QByteArray(5000, ' '));
    EXPECT_FALSE(dao::linkAt(path()).has_value());
    EXPECT_TRUE(dao::beginsAsLink(path()));
}

TEST_F(LinkFileTest, damagedLinkFile_isRefused)
{
    write(changed("port", "prt"));
    EXPECT_THROW(dao::linkAt(path()), runtime::RunTimeError);
}

} // namespace
