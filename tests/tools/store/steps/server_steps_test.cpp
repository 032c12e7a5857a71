#include "store/schema.h"
#include "support/temporary_store.h"
#include "tools/store/server_run.h"
#include "tools/store/steps/workshop.h"

#include <functional>

using namespace Qt::StringLiterals;
using namespace storetooltest;
using testsupport::PlainSql;
using testsupport::TemporaryStore;
using testsupport::ThrowawayDatabase;

namespace {

constexpr int mostSteps = 1000;

/// Kills of commands that write files while the store is in a database on a server.
class ServerStepsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        TemporaryStore store(TemporaryStore::Contents::Delivered);
        store.addOrder(1);
        for (int line = 1; line <= lineCount; ++line)
            store.addLine(1, line);
        ASSERT_EQ(zomrelStore({u"move"_s, store.path(), addressOf(database_.link())}).exitStatus,
                  0);
    }

    /// The link to the database, with different texts for the same meaning.
    dao::Link link(const QString& tls) const
    {
        dao::Link link = database_.link();
        link.tls = tls;
        return link;
    }
    static QStringList linkCommand(const QString& path, const dao::Link& link)
    {
        return {u"link"_s,       path,
                u"--server"_s,   u"%1:%2"_s.arg(link.server).arg(link.port),
                u"--database"_s, link.database,
                u"--user"_s,     link.user,
                u"--tls"_s,      link.tls};
    }

    /// Runs a command that creates or replaces the file `path`, in a new folder for each step at
    /// which it is killed. A station adds lines meanwhile.
    void killAtEveryStep(const std::function<void(const QString& path)>& prepare,
                         const std::function<QStringList(const QString& path)>& arguments,
                         const std::function<void(const QString& path)>& expectWhole)
    {
        PlainSql station(addressFile());
        int steps = 0;
        int lastLine = lineCount;
        for (bool killed = true; killed && !HasFailure() && steps < mostSteps;) {
            SCOPED_TRACE(testing::Message() << "kill at step " << ++steps);
            const QTemporaryDir folder;
            ASSERT_TRUE(QDir(folder.path()).mkdir(u"tmp"_s));
            const QString path = folder.filePath(u"new.mdb"_s);
            prepare(path);
            Interruption interruption{.folder = folder.path(),
                                      .step = steps,
                                      .temporaryFolder = folder.filePath(u"tmp"_s)};
            SteppedProgram program(forced(arguments(path)), interruption);
            while (program.isRunning())
                station.rows(insertionOf(++lastLine));
            killed = program.wasKilled();
            expectWhole(path);
            interruption.step = 0;
            const bool wasThere = QFile::exists(path);
            SteppedProgram again(forced(arguments(path)), interruption);
            EXPECT_TRUE(again.outcome().exitStatus == 0 || wasThere);
            ASSERT_TRUE(QFile::exists(path));
            expectWhole(path);
            EXPECT_EQ(QDir(folder.path())
                          .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                      (QStringList{u"new.mdb"_s, u"tmp"_s}));
            EXPECT_TRUE(QDir(folder.filePath(u"tmp"_s)).isEmpty());
        }
        EXPECT_GT(steps, 5);
        std::printf("killed at %d steps\n", steps - 1);
    }

    /// Returns the tables of the store in a database.
    static QStringList storeTables(const dao::Link& link)
    {
        QStringList tables;
        for (const QVariantList& row : ServerSql(link).rows(
                 u"SELECT tablename::text FROM pg_tables WHERE schemaname = 'public'"_s))
            tables.append(row.first().toString());
        return tables;
    }

    /// Returns a link file to the database.
    QString addressFile() const
    {
        const QString path = folder_.filePath(u"station"_s);
        database_.writeLink(path);
        return path;
    }
    static void expectWholeStore(const QString& path)
    {
        if (!QFile::exists(path))
            return;
        expectSound(path);
        EXPECT_GE(PlainSql(path).scalar(u"SELECT count(*) FROM Cuts"_s).toInt(), lineCount);
    }

    static constexpr int lineCount = 3;
    static constexpr int tableCount = 13; ///< With those that hold the store's mark and the bars.
    QTemporaryDir folder_;
    ThrowawayDatabase database_;
};

} // namespace

TEST_F(ServerStepsTest, KilledLink_leavesTheOldOrTheNewLink)
{
    const dao::Link before = link(u"prefer"_s);
    const dao::Link after = database_.link();
    ASSERT_NE(before, after);
    killAtEveryStep(
        [&](const QString& path) {
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(dao::linkText(before));
        },
        [&](const QString& path) { return linkCommand(path, after); },
        [&](const QString& path) {
            const std::optional<dao::Link> found = dao::linkAt(path);
            EXPECT_TRUE(found == before || found == after);
        });
}

TEST_F(ServerStepsTest, KilledFirstLink_leavesNothingOrTheLink)
{
    killAtEveryStep([](const QString&) {},
                    [&](const QString& path) { return linkCommand(path, database_.link()); },
                    [&](const QString& path) {
                        EXPECT_EQ(dao::linkAt(path).value_or(database_.link()), database_.link());
                    });
}

TEST_F(ServerStepsTest, KilledBackup_leavesNothingOrAWholeBackup)
{
    killAtEveryStep([](const QString&) {},
                    [&](const QString& path) {
                        return QStringList{u"backup"_s, addressOf(database_.link()), path};
                    },
                    expectWholeStore);
}

TEST_F(ServerStepsTest, KilledMove_leavesNothingOrAWholeStore)
{
    killAtEveryStep([](const QString&) {},
                    [&](const QString& path) {
                        return QStringList{u"move"_s, addressOf(database_.link()), path};
                    },
                    expectWholeStore);
}

/// Commands that write to a database are killed before each of their messages to the server.
TEST_F(ServerStepsTest, KilledMoveToADatabase_leavesNothingOrAWholeStore)
{
    const TemporaryStore store(TemporaryStore::Contents::Delivered);
    auto database = std::make_unique<ThrowawayDatabase>();
    int steps = 0;
    for (bool killed = true; killed && !HasFailure() && steps < mostSteps;) {
        SCOPED_TRACE(testing::Message() << "kill at message " << ++steps);
        const QString address = addressOf(database->link());
        SteppedProgram program(forced({u"move"_s, store.path(), address}),
                               {.folder = u"server"_s, .step = steps});
        killed = program.wasKilled();
        const QStringList tables = storeTables(database->link());
        EXPECT_TRUE(tables.isEmpty() || tables.size() == tableCount)
            << tables.join(u' ').toStdString();
        if (!tables.isEmpty()) {
            EXPECT_EQ(zomrelStore({u"check"_s, address}).exitStatus, 0);
            database = std::make_unique<ThrowawayDatabase>();
        }
    }
    EXPECT_GT(steps, 50);
    std::printf("killed at %d messages\n", steps - 1);
}
