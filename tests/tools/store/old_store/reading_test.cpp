#include "tools/store/old_store/reading.h"

#include "platform/runtime/run_time_error.h"
#include "support/printers.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace storetools;

namespace {

class DeafVisitor : public OldStoreVisitor
{
public:
    void opened(OldFormat) override {}
    void foreignTable(const QString&, bool) override {}
    void table(const OldTable&) override {}
    void row(const OldRow&) override {}
    void tableEnd() override {}
    void end() override {}
};

/// Returns the error message about a process that runs this script.
QString errorOf(const QString& script, int longestSilence = 60, int longestTime = 3600)
{
    DeafVisitor visitor;
    try {
        readFrom({u"/bin/sh"_s, {u"-c"_s, script}, longestSilence, longestTime}, visitor);
    } catch (const runtime::RunTimeError& error) {
        EXPECT_EQ(error.number(), runtime::CorruptDatabase);
        return error.description();
    }
    return {};
}

} // namespace

TEST(ReadingTest, CompleteStreamIsRead)
{
    // Two frames with length and kind: a Jet 4 file, and its end.
    EXPECT_EQ(errorOf(uR"(printf '\2\0\0\0\1\4\1\0\0\0\6')"_s), QString());
}

TEST(ReadingTest, FailedProcessIsReportedWithItsReason)
{
    EXPECT_EQ(errorOf(u"echo first >&2; echo 'a page is lost' >&2; exit 1"_s), u"a page is lost"_s);
    EXPECT_EQ(errorOf(u"exit 1"_s), u"reading it fails"_s);
}

TEST(ReadingTest, KilledProcessIsReported)
{
    EXPECT_EQ(errorOf(u"kill -SEGV $$"_s), u"reading it was interrupted"_s);
    EXPECT_EQ(errorOf(u"kill -KILL $$"_s), u"reading it was interrupted"_s);
}

TEST(ReadingTest, HungProcessIsStopped)
{
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(errorOf(u"exec sleep 100"_s, 1), u"reading it takes too long"_s);
    EXPECT_EQ(errorOf(u"exec yes 'this page is odd' >&2"_s, 1), u"reading it takes too long"_s);
    EXPECT_LT(timer.elapsed(), 30'000);
}

TEST(ReadingTest, ProcessThatNeverEndsButWrites_isStopped)
{
    EXPECT_EQ(errorOf(u"while :; do echo still reading >&2; done"_s, 60, 1),
              u"reading it takes too long"_s);
}

/// The reading process is stopped while it opens the old file, so that its limits can be seen.
TEST(ReadingTest, ReadingProcessHasLimits)
{
    const QTemporaryDir folder;
    const QByteArray fifo = QFile::encodeName(folder.filePath(u"old.mdb"_s));
    ASSERT_EQ(mkfifo(fifo.constData(), 0600), 0);
    QProcess process;
    process.start(QStringLiteral(ZOMREL_STORE_PROGRAM),
                  {QString::fromLatin1(readingCommand), QString::fromUtf8(fifo)});
    ASSERT_TRUE(process.waitForStarted());
    // Opening a pipe for writing succeeds as soon as the process has opened it for reading.
    int pipe = -1;
    while (pipe < 0 && !process.waitForFinished(1))
        pipe = open(fifo.constData(), O_WRONLY | O_NONBLOCK);
    ASSERT_GE(pipe, 0);
    QFile limits(u"/proc/%1/limits"_s.arg(process.processId()));
    ASSERT_TRUE(limits.open(QIODevice::ReadOnly));
    const QString text = QString::fromLatin1(limits.readAll()).simplified();
    close(pipe);
    EXPECT_TRUE(text.contains(u"Max cpu time 300 300 seconds"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"Max file size 0 0 bytes"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"Max core file size 0 0 bytes"_s)) << text.toStdString();
#ifndef ZOMREL_ADDRESS_SANITIZER
    EXPECT_TRUE(text.contains(u"Max address space 1073741824 1073741824 bytes"_s))
        << text.toStdString();
#endif
    EXPECT_TRUE(process.waitForFinished(60'000));
    EXPECT_EQ(process.exitCode(), 1);
}

TEST(ReadingTest, InvalidOutputIsRefused)
{
    EXPECT_EQ(errorOf(u"exit 0"_s), u"reading it ended too early"_s);
    EXPECT_EQ(errorOf(uR"(printf '\2\0\0\0\1\4')"_s), u"reading it ended too early"_s);
    EXPECT_EQ(errorOf(u"echo Hello, this is no frame"_s), u"the data read from it is not valid"_s);
    EXPECT_EQ(errorOf(u"exec yes"_s), u"the data read from it is not valid"_s);
}

TEST(ReadingTest, MissingProgramThrows)
{
    DeafVisitor visitor;
    try {
        readFrom({u"/no/such/program"_s, {}}, visitor);
        FAIL();
    } catch (const runtime::RunTimeError& error) {
        EXPECT_EQ(error.number(), runtime::InternalError);
    }
}
