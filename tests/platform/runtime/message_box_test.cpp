#include "platform/runtime/message_box.h"
#include "platform/runtime/run_time_error.h"
#include "platform/runtime/version.h"

#include "support/doors.h"

#include <gtest/gtest.h>

using namespace runtime;
using namespace Qt::StringLiterals;

namespace {

TEST(MessageBox, FlagsHaveTheirClassicValues)
{
    EXPECT_EQ(refusalFlags, 1572880);
    EXPECT_EQ(questionFlags, 1572900);
}

TEST(MessageBox, EmptyTitleBecomesTheProjectName)
{
    testsupport::RecordedBoxes boxes;
    boxes.answer(vbOK);
    boxes.answer(vbYes);
    EXPECT_EQ(MsgBox(u"a"_s), vbOK);
    EXPECT_EQ(MsgBox(u"b"_s, questionFlags, u"t"_s), vbYes);
    EXPECT_EQ(boxes.shown()[0].title, u"ProjZomrel"_s);
    EXPECT_EQ(boxes.shown()[1].title, u"t"_s);
}

TEST(RunTimeErrors, HaveTheirClassicDescriptions)
{
    EXPECT_EQ(RunTimeError(TypeMismatch).description(), u"Type mismatch"_s);
    EXPECT_EQ(RunTimeError(NoCurrentRecord).description(), u"No current record."_s);
    EXPECT_EQ(errorDescription(InvalidUseOfNull), u"Invalid use of Null"_s);
    EXPECT_EQ(errorDescription(4711), QString());
    EXPECT_STREQ(RunTimeError(Overflow).what(), "6: Overflow");
}

TEST(Version, HasFourParts)
{
    EXPECT_EQ(programVersion().segmentCount(), 4);
    EXPECT_EQ(programVersion(), QVersionNumber({2, 1, 0, 60}));
}

} // namespace
