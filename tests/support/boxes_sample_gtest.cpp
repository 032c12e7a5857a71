// A sample test program. boxes_test runs it and checks its exit status and its output.

#include "support/doors.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

bool isAskedAfterTheTests = false;

/// Shows a message box after the last test, like a window that outlives its test.
class Leftover : public testing::Environment
{
    void TearDown() override
    {
        if (isAskedAfterTheTests)
            runtime::MsgBox(u"asked"_s);
    }
};

const testing::Environment* const leftover = testing::AddGlobalTestEnvironment(new Leftover);

} // namespace

TEST(Boxes, answered)
{
    testsupport::RecordedBoxes boxes;
    boxes.answer(runtime::vbOK);
    runtime::MsgBox(u"asked"_s);
}

TEST(Boxes, taken)
{
    testsupport::RecordedBoxes boxes;
    runtime::MsgBox(u"asked"_s);
    EXPECT_EQ(boxes.takeUnexpected(), QList<QString>{u"asked"_s});
}

TEST(Boxes, unexpected)
{
    const testsupport::RecordedBoxes boxes;
    runtime::MsgBox(u"asked"_s);
}

TEST(Boxes, unexpectedAndCleared)
{
    testsupport::RecordedBoxes boxes;
    runtime::MsgBox(u"asked"_s);
    boxes.clear();
}

TEST(Boxes, didNotCome)
{
    testsupport::RecordedBoxes boxes;
    boxes.answer(runtime::vbOK);
}

TEST(Boxes, unwatched)
{
    runtime::MsgBox(u"asked"_s);
}

TEST(Boxes, afterTheTests)
{
    isAskedAfterTheTests = true;
}
