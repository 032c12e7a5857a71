// Not a test of the program: boxes_test runs it and looks at how it ends.

#include "support/doors.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

bool isAskedAfterTheTests = false;

/// Asks once the last test is over, as a window does that outlives its test.
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
