#include "driving/controls.h"
#include "platform/runtime/guard.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// A form with the controls CmdDel and CmdAdd.
class MissingDeathTest : public testing::Test
{
protected:
    MissingDeathTest() : del_(&form), add_(&form)
    {
        del_.setObjectName(u"CmdDel"_s);
        add_.setObjectName(u"CmdAdd"_s);
    }
    QObject form;

private:
    QObject del_;
    QObject add_;
};

TEST_F(MissingDeathTest, Control_thatExists_isReturned)
{
    EXPECT_EQ(driving::control<QObject>(form, u"CmdAdd"_s).objectName(), u"CmdAdd"_s);
}

TEST_F(MissingDeathTest, Control_missing_endsTheProcessWithTheExistingNames)
{
    EXPECT_DEATH(driving::control<QObject>(form, u"CmdEnd"_s),
                 "no child named CmdEnd; existing names: CmdAdd, CmdDel");
}

TEST_F(MissingDeathTest, Control_missingInAGuardedHandler_endsTheProcessWithTheExistingNames)
{
    EXPECT_DEATH(runtime::guarded([this] { driving::control<QObject>(form, u"CmdEnd"_s); }),
                 "no child named CmdEnd; existing names: CmdAdd, CmdDel");
}

TEST_F(MissingDeathTest, Command_missing_endsTheProcess)
{
    EXPECT_DEATH(driving::trigger(form, u"Order"_s), "no command named Order; existing names: ");
}

} // namespace
