#include "platform/runtime/durable_file.h"
#include "support/temporary_store.h"
#include "tools/shop/program_run.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <csignal>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using shoptooltest::contentsOf;
using testsupport::TemporaryStore;

namespace {

constexpr int runs = 16;

/// The contents of a document of an earlier run.
const QByteArray previous = "previous";

QStringList arguments(const TemporaryStore& store, const QString& folder)
{
    return {u"plan"_s,  u"7"_s, u"--store"_s,     store.path(),
            u"--out"_s, folder, u"--documents"_s, u"cut-list,bar-plan,glass,mesh,workbook,json"_s};
}

void fill(TemporaryStore& store)
{
    store.addOrder(7);
    for (int line = 1; line <= 5; ++line)
        store.addLine(7, line);
}

QMap<QString, QByteArray> filesIn(const QString& folder)
{
    QMap<QString, QByteArray> files;
    for (const QString& each :
         QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
        files.insert(each, contentsOf(folder + u'/' + each));
    return files;
}

/// Runs the program and kills it after this time.
void killAfter(const QStringList& words, qint64 microseconds)
{
    QProcess process;
    QElapsedTimer timer;
    timer.start();
    process.start(QStringLiteral(ZOMREL_SHOP_PROGRAM), words);
    ASSERT_TRUE(process.waitForStarted());
    while (timer.nsecsElapsed() < microseconds * 1000 &&
           !process.waitForFinished(1)) { // The run may end first.
    }
    process.kill();
    process.waitForFinished();
}

/// Returns the complete documents, and how long a run takes.
std::pair<QMap<QString, QByteArray>, qint64> completeRun(const TemporaryStore& store)
{
    const QTemporaryDir folder;
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(shoptooltest::zomrelShop(arguments(store, folder.path())).exitStatus, 0);
    return {filesIn(folder.path()), timer.nsecsElapsed() / 1000};
}

} // namespace

TEST(KilledRunTest, NewFolder_HasOnlyCompleteDocuments)
{
    TemporaryStore store;
    fill(store);
    const auto [complete, duration] = completeRun(store);
    ASSERT_EQ(complete.size(), 6);
    for (int i = 0; i < runs; ++i) {
        const QTemporaryDir folder;
        killAfter(arguments(store, folder.path()), duration * (i + 1) / runs);
        const QMap<QString, QByteArray> left = filesIn(folder.path());
        for (const QString& name : left.keys()) {
            EXPECT_TRUE(complete.contains(name)) << i << ' ' << qPrintable(name);
            EXPECT_EQ(left[name], complete[name]) << i << ' ' << qPrintable(name);
        }
    }
}

TEST(KilledRunTest, PreviousDocuments_StayOrAreReplacedAsAWhole)
{
    TemporaryStore store;
    fill(store);
    const auto [complete, duration] = completeRun(store);
    for (int i = 0; i < runs; ++i) {
        const QTemporaryDir folder;
        for (const QString& name : complete.keys()) {
            QFile file(folder.filePath(name));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(previous);
        }
        killAfter(arguments(store, folder.path()), duration * (i + 1) / runs);
        const QMap<QString, QByteArray> left = filesIn(folder.path());
        for (const QString& name : complete.keys())
            EXPECT_TRUE(left[name] == previous || left[name] == complete[name])
                << i << ' ' << qPrintable(name);
        // The next run removes what the instant of a replacement can leave.
        EXPECT_EQ(shoptooltest::zomrelShop(arguments(store, folder.path())).exitStatus, 0);
        EXPECT_EQ(filesIn(folder.path()), complete);
    }
}

TEST(KilledRunTest, InterruptionWhileItWaitsForAnotherRun_EndsItAtOnce)
{
    TemporaryStore store;
    fill(store);
    const QTemporaryDir folder;
    const runtime::FolderMark other(QDir(folder.path()).canonicalPath());
    ASSERT_TRUE(other.isValid());
    const int watch = inotify_init1(IN_CLOEXEC);
    ASSERT_GE(inotify_add_watch(watch, qPrintable(folder.path()), IN_OPEN), 0);
    QProcess process;
    process.start(QStringLiteral(ZOMREL_SHOP_PROGRAM), arguments(store, folder.path()));
    ASSERT_TRUE(process.waitForStarted());
    // The run opens the folder when it tries to mark it.
    pollfd opened{watch, POLLIN, 0};
    ASSERT_EQ(poll(&opened, 1, 60000), 1);
    ::close(watch);
    ASSERT_EQ(::kill(static_cast<pid_t>(process.processId()), SIGINT), 0);
    ASSERT_TRUE(process.waitForFinished(20000));
    EXPECT_EQ(process.exitStatus(), QProcess::CrashExit);
    EXPECT_TRUE(filesIn(folder.path()).isEmpty());
}
