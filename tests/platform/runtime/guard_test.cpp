#include "platform/runtime/guard.h"

#include "support/doors.h"

#include <QObject>
#include <QTimer>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace runtime;
using namespace Qt::StringLiterals;

namespace {

TEST(Guard, ErrorShowsTheRunTimeBoxAndEndsWithStatusOne)
{
    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
    boxes.answer(vbOK);
    guarded([] { throw RunTimeError(TypeMismatch); });
    ASSERT_EQ(boxes.shown().size(), 1u);
    EXPECT_EQ(boxes.shown()[0].text, u"Run-time error '13':\n\nType mismatch"_s);
    EXPECT_EQ(boxes.shown()[0].title, u"ProjZomrel"_s);
    EXPECT_EQ(boxes.shown()[0].flags, vbCritical);
    EXPECT_EQ(end.exitStatus(), 1);
}

TEST(Guard, WritesTheErrorAndItsSenderToStandardError)
{
    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
    boxes.answer(vbOK);
    QObject form;
    form.setObjectName(u"FrOrder"_s);
    auto* unnamed = new QObject(&form);
    auto* button = new QObject(unnamed);
    button->setObjectName(u"CmdAdd"_s);
    on(button, &QObject::objectNameChanged, &form, [] { throw RunTimeError(TypeMismatch); });
    testing::internal::CaptureStderr();
    button->setObjectName(u"CmdOK"_s);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Run-time error 13 in FrOrder/CmdOK: Type mismatch\n");
}

TEST(Guard, WritesNoNameOfASenderThatTheHandlerHasDeleted)
{
    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
    boxes.answer(vbOK);
    auto* button = new QObject;
    button->setObjectName(u"CmdOK"_s);
    testing::internal::CaptureStderr();
    guarded(
        [button] {
            delete button;
            throw RunTimeError(Overflow);
        },
        QPointer<const QObject>(button));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Run-time error 6 in an unnamed object: Overflow\n");
}

TEST(Guard, LeavesAHandlerThatSucceedsAlone)
{
    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
    bool ran = false;
    guarded([&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_FALSE(end.exitStatus());
}

TEST(Guard, OtherExceptionsShowTheRunTimeBox)
{
    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
    boxes.answer(vbOK);
    guarded([] { throw std::runtime_error("strange"); });
    ASSERT_EQ(boxes.shown().size(), 1u);
    EXPECT_EQ(boxes.shown()[0].text, u"Run-time error '51':\n\nstrange"_s);
    EXPECT_EQ(end.exitStatus(), 1);
}

TEST(Guard, BadAllocIsReportedAsOutOfMemory)
{
    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
    boxes.answer(vbOK);
    guarded([] { throw std::bad_alloc(); });
    ASSERT_EQ(boxes.shown().size(), 1u);
    EXPECT_EQ(boxes.shown()[0].text, u"Run-time error '7':\n\nOut of memory"_s);
    EXPECT_EQ(end.exitStatus(), 1);
}

TEST(Guard, NoOtherHandlerRunsWhileTheBoxIsOpen)
{
    testsupport::RecordedEnd end;
    bool ranMeanwhile = false;
    const MessageBoxDoor::Function former = messageBoxDoor().replace([&](const MessageBoxRequest&) {
        guarded([&] { ranMeanwhile = true; });
        return vbOK;
    });
    guarded([] { throw RunTimeError(Overflow); });
    messageBoxDoor().replace(former);
    EXPECT_FALSE(ranMeanwhile);
    EXPECT_EQ(end.exitStatus(), 1);
    EXPECT_FALSE(isEnding());
}

TEST(Guard, EndOfTheProcessIsNotCaught)
{
    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
    bool wentOn = false;
    guarded([&] {
        EndProcess(0);
        wentOn = true;
    });
    EXPECT_FALSE(wentOn);
    EXPECT_EQ(end.exitStatus(), 0);
    EXPECT_TRUE(boxes.shown().empty());
}

TEST(Guard, ConnectsSignalsWithAndWithoutTheirArguments)
{
    QObject sender;
    QObject context;
    QString heard;
    int count = 0;
    on(&sender, &QObject::objectNameChanged, &context, [&](const QString& name) { heard = name; });
    on(&sender, &QObject::objectNameChanged, &context, [&] { ++count; });
    sender.setObjectName(u"a"_s);
    EXPECT_EQ(heard, u"a"_s);
    EXPECT_EQ(count, 1);
}

} // namespace
