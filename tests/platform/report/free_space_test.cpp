#include "platform/report/free_space.h"

#include <gtest/gtest.h>

#include <vector>

using namespace report;

namespace {

/// Every caption is 500 twips wide.
double captionWidth(const ControlDesign&)
{
    return 500;
}

ControlDesign field(int left, int width, Align align = Align::Right, int style = Plain)
{
    return {Kind::Field, u"Field", u"Column", left, 1000, width, 300, 12, align, style};
}

ControlDesign caption(int left, int width, Align align, int top = 1000)
{
    return {Kind::Label, u"Caption", u"text", left, top, width, 300, 12, align, Plain};
}

ControlDesign line(int left, int top, int width, int height)
{
    return {Kind::Line, u"Line", u"", left, top, width, height};
}

/// Returns the free part of the first control among all of them.
Extent freeOf(const std::vector<ControlDesign>& controls)
{
    return freeExtent(controls[0], controls, captionWidth);
}

void expectFree(const std::vector<ControlDesign>& controls, double left, double right)
{
    const Extent free = freeOf(controls);
    EXPECT_EQ(free.left, left);
    EXPECT_EQ(free.right, right);
}

TEST(FreeSpace, SingleControlHasItsWholeWidth)
{
    expectFree({field(2000, 600)}, 0, 600);
}

TEST(FreeSpace, BoxedControlKeepsClearOfItsBorders)
{
    expectFree({field(2000, 600, Align::Right, Boxed)}, 40, 560);
    // A narrow box keeps a tenth of its width.
    expectFree({field(2000, 200, Align::Right, Boxed)}, 20, 180);
}

TEST(FreeSpace, FieldKeepsClearOfAnAdjacentCaption)
{
    // The centred caption in 2550..3550 covers 2800..3300, which is too far away to matter.
    expectFree({field(2000, 600), caption(2550, 1000, Align::Centre)}, 0, 600);
    // At the left of its box, the caption covers 2550..3050, so the text ends at 2510.
    expectFree({field(2000, 600), caption(2550, 1000, Align::Left)}, 0, 510);
    // At the right of its box 1000..2030, the caption covers 1530..2030, so the text starts at
    // 2070.
    expectFree({field(2000, 600), caption(1000, 1030, Align::Right)}, 70, 600);
    // A caption wider than its box is condensed to the box: 1800..2020.
    expectFree({field(2000, 600), caption(1800, 220, Align::Left)}, 60, 600);
}

TEST(FreeSpace, ControlsOnOtherLinesAreIgnored)
{
    expectFree({field(2000, 600), caption(2550, 1000, Align::Left, 1160)}, 0, 600);
    expectFree({field(2000, 600), caption(2550, 1000, Align::Left, 1150)}, 0, 510);
}

TEST(FreeSpace, FieldKeepsClearOfVerticalLines)
{
    expectFree({field(2000, 600), line(1990, 0, 0, 5000)}, 30, 600);
    expectFree({field(2000, 600), line(2600, 0, 0, 5000)}, 0, 560);
    expectFree({field(2000, 600), line(1950, 0, 0, 5000)}, 0, 600); // The line is 50 twips away.
    // The line ends above the middle of the field.
    expectFree({field(2000, 600), line(2600, 0, 0, 1100)}, 0, 600);
    expectFree({field(2000, 600), line(0, 1000, 5000, 0)}, 0, 600); // The line is horizontal.
}

TEST(FreeSpace, FieldKeepsClearOfANeighboursBorders)
{
    expectFree({field(2000, 600, Align::Right, Boxed), field(2588, 600, Align::Right, Boxed)}, 40,
               548);
}

TEST(FreeSpace, NeighboursThatLeaveTooLittleAreIgnored)
{
    expectFree({field(2000, 600), caption(2300, 1000, Align::Left)}, 0, 260 + 340);
    expectFree({field(2000, 600), caption(2350, 1000, Align::Left)}, 0, 310);
}

TEST(FreeSpace, LabelHasItsWholeWidth)
{
    ControlDesign label = caption(2000, 600, Align::Left);
    expectFree({label, caption(2550, 1000, Align::Left), line(2590, 0, 0, 5000)}, 0, 600);
}

TEST(FreeSpace, CentredTextLosesWidthOnBothSides)
{
    EXPECT_EQ(usableWidth({70, 600}, 600, Align::Right), 530);
    EXPECT_EQ(usableWidth({70, 600}, 600, Align::Left), 530);
    EXPECT_EQ(usableWidth({70, 600}, 600, Align::Centre), 460);
    EXPECT_EQ(usableWidth({0, 510}, 600, Align::Centre), 420);
}

} // namespace
