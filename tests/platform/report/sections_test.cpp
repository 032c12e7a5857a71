#include "platform/report/sections.h"

#include "platform/report/small_report.h"
#include "support/errors.h"

#include <gtest/gtest.h>

using namespace report;
using testsupport::errorOf;
using namespace Qt::StringLiterals;

namespace {

TEST(Sections, HaveTheControlsOfTheDesign)
{
    auto sections = makeSections(testsupport::smallReport);
    ASSERT_EQ(sections.size(), 3u);
    EXPECT_EQ(sections[0].controls().size(), 3u);
    EXPECT_EQ(sections[0].Controls(u"Title"_s).Caption(), u"כותרת"_s);
    EXPECT_EQ(sections[0].Controls(u"Number"_s).Caption(), QString());
    EXPECT_TRUE(sections[0].Controls(u"Logo"_s).Picture().isNull());
}

TEST(Sections, KeepCaptionsAndPicturesSetAtRunTime)
{
    auto sections = makeSections(testsupport::smallReport);
    sections[0].Controls(u"Number"_s).setCaption(u"  12 "_s);
    QImage picture(3, 2, QImage::Format_RGB32);
    picture.fill(0xff112233);
    sections[0].Controls(u"Logo"_s).setPicture(picture);
    EXPECT_EQ(sections[0].Controls(u"Number"_s).Caption(), u"  12 "_s);
    EXPECT_EQ(sections[0].Controls(u"Logo"_s).Picture(), picture);
}

TEST(Sections, ThrowForAPropertyThatTheControlLacks)
{
    auto sections = makeSections(testsupport::smallReport);
    EXPECT_EQ(errorOf([&] { sections[0].Controls(u"NameField"_s); }), 5)
        << "control of another section";
    EXPECT_EQ(errorOf([&] { sections[0].Controls(u"title"_s); }), 5) << "names are case-sensitive";
    EXPECT_EQ(errorOf([&] { sections[0].Controls(QString()); }), 5);
    EXPECT_EQ(errorOf([&] { sections[1].Controls(u"NameField"_s).setCaption(u"x"_s); }), 5);
    EXPECT_EQ(errorOf([&] { sections[0].Controls(u"Logo"_s).setCaption(u"x"_s); }), 5);
    EXPECT_EQ(errorOf([&] { sections[0].Controls(u"Title"_s).setPicture(QImage()); }), 5);
}

} // namespace
