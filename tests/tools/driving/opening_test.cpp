#include "driving/opening.h"

#include <QStringList>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Returns the entries as "control=text".
QStringList texts(const std::vector<driving::Entry>& entries)
{
    QStringList all;
    for (const driving::Entry& each : entries)
        all.append(each.control + u'=' + each.text);
    return all;
}

TEST(Opening, WindowMeasures_fillTheFirstFourBoxes)
{
    const driving::Opening opening{{u"120"_s, u"50"_s}, {u"100"_s, u"25"_s}, {}, {}, std::nullopt};
    EXPECT_EQ(texts(measureEntries(opening)), (QStringList{u"TextNum_0=120"_s, u"TextNum_1=50"_s,
                                                           u"TextNum_2=100"_s, u"TextNum_3=25"_s}));
}

TEST(Opening, DoorThickness_fillsTheFifthAndSixthBox)
{
    const driving::Opening opening{
        {u"90"_s, u"00"_s}, {u"210"_s, u"00"_s}, {}, {}, driving::Boxes{u"4"_s, u"75"_s}};
    EXPECT_EQ(texts(measureEntries(opening)).mid(4),
              (QStringList{u"TextNum_4=4"_s, u"TextNum_5=75"_s}));
}

TEST(Opening, EmptyMeasure_leavesItsBoxesOut)
{
    const driving::Opening opening{{}, {u"100"_s, u"25"_s}, {}, {}, std::nullopt};
    EXPECT_EQ(texts(measureEntries(opening)), (QStringList{u"TextNum_2=100"_s, u"TextNum_3=25"_s}));
}

TEST(Opening, Lists_giveKindAndColourOfEachPart)
{
    const driving::Opening opening{
        {}, {}, {u"k0"_s, u"k1"_s, u"k2"_s, u"k3"_s}, {u"c0"_s, u"c1"_s, u"c2"_s, u"c3"_s}, {}};
    EXPECT_EQ(texts(listEntries(opening)),
              (QStringList{u"DBComboKind_0=k0"_s, u"DBComboColor_0=c0"_s, u"DBComboKind_1=k1"_s,
                           u"DBComboColor_1=c1"_s, u"DBComboKind_2=k2"_s, u"DBComboColor_2=c2"_s,
                           u"DBComboKind_3=k3"_s, u"DBComboColor_3=c3"_s}));
}

} // namespace
