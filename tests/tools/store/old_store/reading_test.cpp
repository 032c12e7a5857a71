#include "tools/store/old_store/reading.h"

#include "platform/runtime/run_time_error.h"
#include "support/printers.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

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
QString errorOf(const QString& script, int longestSilence = 60)
{
    DeafVisitor visitor;
    try {
        readFrom({u"/bin/sh"_s, {u"-c"_s, script}, longestSilence}, visitor);
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
    EXPECT_EQ(errorOf(u"kill -SEGV $$"_s), u"reading it breaks off"_s);
    EXPECT_EQ(errorOf(u"kill -KILL $$"_s), u"reading it breaks off"_s);
}

TEST(ReadingTest, HungProcessIsStopped)
{
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(errorOf(u"exec sleep 100"_s, 1), u"reading it comes to no end"_s);
    EXPECT_EQ(errorOf(u"exec yes 'this page is odd' >&2"_s, 1), u"reading it comes to no end"_s);
    EXPECT_LT(timer.elapsed(), 30'000);
}

TEST(ReadingTest, InvalidOutputIsRefused)
{
    EXPECT_EQ(errorOf(u"exit 0"_s), u"reading it does not reach its end"_s);
    EXPECT_EQ(errorOf(uR"(printf '\2\0\0\0\1\4')"_s), u"reading it does not reach its end"_s);
    EXPECT_EQ(errorOf(u"echo Hello, this is no frame"_s), u"what was read of it makes no sense"_s);
    EXPECT_EQ(errorOf(u"exec yes"_s), u"what was read of it makes no sense"_s);
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
