#include "store/access_error.h"

#include "platform/runtime/guard.h"
#include "platform/runtime/message_box.h"
#include "store/file_manager.h"
#include "support/doors.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int plainFlags = 16 + 1048576;
constexpr int yesNoCancelFlags = 3 + 16 + 1048576;

/// Returns the first line of the error box, which names the error before any advice.
QString firstLine(int number, const QString& description)
{
    return u"שגיאה מספר: (%1) - תאור: "_s.arg(number) + description;
}

QString lockedText(const QString& firstLine)
{
    return firstLine +
           u"\rעצות:\rבסיס הנתונים נעול על ידי משתמש אחר,נא תצא מכל העמדות של התוכנה או תנסה "
           u"להפעיל מחדש את כל המחשבים !"_s;
}

QString noAccessText(const QString& firstLine)
{
    return firstLine +
           u"\rאין גישה לקובץ ! סיבות :"_s
           u"\r(1) המחשב הראשי שעליו קיימים הנתונים לתוכנה כבוי."_s
           u" (2) הגישה דרך הרשת למחשב הראשי לא עובדת כראוי."_s
           u" (3) הנתיב של הקובץ השתנה,אז עליכם להכניס נתיב חדש לקובץ."_s
           u"\r"_s
           u"\rהאם ברצונך לנסות שוב לגשת לקובץ מחדש ? (קודם עליכם לבדוק שהמחשב הראשי עובד כראוי / או "_s
           u"לסדר את חיבורי הרשת מחדש)."_s
           u"\rאו לקבוע מיקום חדש לקובץ (לא/NO)."_s;
}

class AccessErrorTest : public testing::Test
{
protected:
    AccessErrorTest() : former_(store::setFileManagerDoor([this] { ++fileManagerStarts; })) {}
    ~AccessErrorTest() override { store::setFileManagerDoor(std::move(former_)); }

    const runtime::MessageBoxRequest& onlyBox() const
    {
        EXPECT_EQ(boxes.shown().size(), 1u);
        return boxes.shown().front();
    }

    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
    int fileManagerStarts = 0;

private:
    store::FileManagerDoor former_;
};

class SilentNumber : public AccessErrorTest, public testing::WithParamInterface<int>
{
};

TEST_P(SilentNumber, ShowsNothing)
{
    store::ReportAccessError(GetParam(), u"any description"_s);
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_FALSE(end.exitStatus());
}

INSTANTIATE_TEST_SUITE_P(AccessError, SilentNumber, testing::Values(0, 32755));

class PlainNumber : public AccessErrorTest, public testing::WithParamInterface<int>
{
};

TEST_P(PlainNumber, ShowsNumberAndDescriptionAndReturns)
{
    boxes.answer(runtime::vbOK);
    store::ReportAccessError(GetParam(), u"What went wrong."_s);
    EXPECT_EQ(onlyBox().text, firstLine(GetParam(), u"What went wrong."_s));
    EXPECT_EQ(onlyBox().title, u"שגיאה"_s);
    EXPECT_EQ(onlyBox().flags, plainFlags);
    EXPECT_FALSE(end.exitStatus());
    EXPECT_EQ(fileManagerStarts, 0);
}

INSTANTIATE_TEST_SUITE_P(AccessError, PlainNumber,
                         testing::Values(-1, 1, 13, 52, 54, 90, 92, 3023, 3025, 3042, 3045, 3259,
                                         3263, 3343, 32754, 32756, 2147483647));

TEST_F(AccessErrorTest, EmptyDescriptionShowsOnlyTheFirstLine)
{
    boxes.answer(runtime::vbOK);
    store::ReportAccessError(3259, QString());
    EXPECT_EQ(onlyBox().text, u"שגיאה מספר: (3259) - תאור: "_s);
}

class LockedNumber : public AccessErrorTest, public testing::WithParamInterface<int>
{
};

TEST_P(LockedNumber, ShowsAdviceAndEndsTheProcess)
{
    boxes.answer(runtime::vbOK);
    EXPECT_THROW(store::ReportAccessError(GetParam(), u"Locked."_s), runtime::ProcessEnded);
    EXPECT_EQ(onlyBox().text, lockedText(firstLine(GetParam(), u"Locked."_s)));
    EXPECT_EQ(onlyBox().title, u"שגיאה"_s);
    EXPECT_EQ(onlyBox().flags, plainFlags);
    EXPECT_EQ(end.exitStatus(), 1);
}

INSTANTIATE_TEST_SUITE_P(AccessError, LockedNumber, testing::Values(91, 3260, 3261, 3262));

class NoAccessNumber : public AccessErrorTest, public testing::WithParamInterface<int>
{
};

TEST_P(NoAccessNumber, CancelReturns)
{
    boxes.answer(runtime::vbCancel);
    store::ReportAccessError(GetParam(), u"Lost."_s);
    EXPECT_EQ(onlyBox().text, noAccessText(firstLine(GetParam(), u"Lost."_s)));
    EXPECT_EQ(onlyBox().title, u"שגיאה"_s);
    EXPECT_EQ(onlyBox().flags, yesNoCancelFlags);
    EXPECT_FALSE(end.exitStatus());
    EXPECT_EQ(fileManagerStarts, 0);
}

TEST_P(NoAccessNumber, YesStartsTheFileManagerAndReturns)
{
    boxes.answer(runtime::vbYes);
    store::ReportAccessError(GetParam(), u"Lost."_s);
    EXPECT_EQ(boxes.shown().size(), 1u);
    EXPECT_EQ(fileManagerStarts, 1);
    EXPECT_FALSE(end.exitStatus());
}

TEST_P(NoAccessNumber, NoEndsTheProcessWithObjectRequired)
{
    boxes.answer(runtime::vbNo);
    boxes.answer(runtime::vbOK);
    runtime::guarded([] { store::ReportAccessError(GetParam(), u"Lost."_s); });
    ASSERT_EQ(boxes.shown().size(), 2u);
    EXPECT_EQ(boxes.shown()[1].text, u"Run-time error '424':\n\nObject required"_s);
    EXPECT_EQ(boxes.shown()[1].title, u"ProjZomrel"_s);
    EXPECT_EQ(fileManagerStarts, 0);
    EXPECT_EQ(end.exitStatus(), 1);
}

INSTANTIATE_TEST_SUITE_P(AccessError, NoAccessNumber, testing::Values(53, 3024, 3043, 3044));

TEST_F(AccessErrorTest, LineEndsAreSingleCarriageReturns)
{
    boxes.answer(runtime::vbCancel);
    store::ReportAccessError(53, u"Lost."_s);
    EXPECT_EQ(onlyBox().text.count(u'\r'), 5);
    EXPECT_FALSE(onlyBox().text.contains(u'\n'));
}

} // namespace
