#include "support/temporary_store.h"
#include "tools/store/server_run.h"

#include <QDir>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using storetooltest::addressOf;
using storetooltest::asText;
using storetooltest::contentsOf;
using storetooltest::Outcome;
using storetooltest::zomrelStore;
using testsupport::ThrowawayDatabase;

namespace {

QStringList linkCommand(const QString& path, const dao::Link& link)
{
    return {
        u"link"_s,       path,          u"--server"_s, u"%1:%2"_s.arg(link.server).arg(link.port),
        u"--database"_s, link.database, u"--user"_s,   link.user,
        u"--tls"_s,      link.tls};
}

class LinkTest : public testing::Test
{
protected:
    QString path() const { return folder_.filePath(u"Aluminium.mdb"_s); }
    QStringList files() const
    {
        return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir folder_;
    ThrowawayDatabase database_;
};

} // namespace

TEST_F(LinkTest, WritesALinkToTheStore)
{
    const testsupport::TemporaryStore store(testsupport::TemporaryStore::Contents::Delivered);
    ASSERT_EQ(zomrelStore({u"move"_s, store.path(), addressOf(database_.link())}).exitStatus, 0);
    const Outcome outcome = zomrelStore(linkCommand(path(), database_.link()));
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.out, QStringList{u"linked %1 to %2"_s.arg(path(), database_.link().place())});
    EXPECT_TRUE(outcome.err.isEmpty());
    EXPECT_EQ(dao::linkAt(path()), database_.link());
    EXPECT_EQ(files(), QStringList{u"Aluminium.mdb"_s});
    EXPECT_EQ(zomrelStore({u"check"_s, path()}).out,
              QStringList{u"sound and complete: "_s + path()});
}

TEST_F(LinkTest, DatabaseWithoutAStoreIsReported)
{
    const Outcome outcome = zomrelStore(linkCommand(path(), database_.link()));
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.out.value(1),
              u"there is no store in that database yet; zomrel-store move brings one there"_s);
    EXPECT_EQ(dao::linkAt(path()), database_.link());
}

TEST_F(LinkTest, ReplacesAnExistingLink)
{
    const ThrowawayDatabase other;
    ASSERT_EQ(zomrelStore(linkCommand(path(), other.link())).exitStatus, 0);
    ASSERT_EQ(zomrelStore(linkCommand(path(), database_.link())).exitStatus, 0);
    EXPECT_EQ(dao::linkAt(path()), database_.link());
}

TEST_F(LinkTest, RefusesToReplaceAnotherFile)
{
    const testsupport::TemporaryStore store;
    const QByteArray before = contentsOf(store.path());
    const Outcome refused = zomrelStore(linkCommand(store.path(), database_.link()));
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_EQ(refused.err,
              QStringList{u"zomrel-store: Database '%1' already exists."_s.arg(store.path())});
    EXPECT_EQ(contentsOf(store.path()), before);

    for (const QByteArray& contents : {QByteArray("notes"), QByteArray()}) {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        file.close();
        EXPECT_EQ(zomrelStore(linkCommand(path(), database_.link())).exitStatus, 1);
        EXPECT_EQ(contentsOf(path()), contents);
    }
}

TEST_F(LinkTest, UnreachableServerLeavesNoLink)
{
    dao::Link wrong = database_.link();
    wrong.port = 1;
    const Outcome unreachable = zomrelStore(linkCommand(path(), wrong));
    EXPECT_EQ(unreachable.exitStatus, 1);
    EXPECT_TRUE(unreachable.err.value(0).contains(wrong.place())) << asText(unreachable.err);
    wrong = database_.link();
    wrong.database = u"absent"_s;
    EXPECT_EQ(zomrelStore(linkCommand(path(), wrong)).exitStatus, 1);
    EXPECT_TRUE(files().isEmpty());
    // An existing link remains.
    ASSERT_EQ(zomrelStore(linkCommand(path(), database_.link())).exitStatus, 0);
    EXPECT_EQ(zomrelStore(linkCommand(path(), wrong)).exitStatus, 1);
    EXPECT_EQ(dao::linkAt(path()), database_.link());
}

TEST_F(LinkTest, RequiresItsOptions)
{
    const QStringList whole = linkCommand(path(), database_.link());
    for (const QString& option : {u"--server"_s, u"--database"_s, u"--user"_s}) {
        QStringList some = whole;
        some.remove(some.indexOf(option), 2);
        const Outcome outcome = zomrelStore(some);
        EXPECT_EQ(outcome.exitStatus, 2);
        EXPECT_TRUE(outcome.err.value(0).startsWith(u"zomrel-store: link takes "_s + option));
    }
    for (const auto& [option, value] :
         {std::pair(u"--tls"_s, u"some"_s), std::pair(u"--server"_s, u"host:"_s),
          std::pair(u"--database"_s, u""_s), std::pair(u"--user"_s, u"a\nb"_s)}) {
        QStringList wrong = whole;
        wrong[wrong.indexOf(option) + 1] = value;
        EXPECT_EQ(zomrelStore(wrong).exitStatus, 2) << option.toStdString();
    }
    EXPECT_EQ(zomrelStore(whole + QStringList{u"--password"_s, u"secret"_s}).exitStatus, 2);
    EXPECT_TRUE(files().isEmpty());
}
