#include "base/measures.h"

#include "support/errors.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace Qt::StringLiterals;
using testsupport::errorOf;

struct Split
{
    double value;
    int whole;
    QString hundredths;
};

TEST(Measures, SplitsAStoredMeasureIntoItsTwoBoxes)
{
    const Split cases[]{
        {0, 0, u"00"_s},
        {2.5, 2, u"50"_s},
        {0.05, 0, u"05"_s},
        {12, 12, u"00"_s},
        {2.999, 3, u"00"_s},    // Rounded before it is split.
        {2.004, 2, u"00"_s},    //
        {2.005, 2, u"00"_s},    // 200.5 hundredths, rounded half to even.
        {2.015, 2, u"02"_s},    // 201.5 hundredths, rounded half to even.
        {999.99, 999, u"99"_s}, //
        {0.099, 0, u"10"_s},    // The smallest value whose hundredths have two significant digits.
        {327.67, 327, u"67"_s}, //
        {1000, 1000, u"00"_s},  // Larger than a box can show; the box's limit is not checked here.
        {32767.99, 32767, u"99"_s},
    };
    for (const Split& each : cases) {
        EXPECT_EQ(Module1::WholePart(each.value), each.whole) << each.value;
        EXPECT_EQ(Module1::HundredthsText(each.value), each.hundredths) << each.value;
    }
}

TEST(Measures, SplitsANegativeMeasureWithItsSign)
{
    EXPECT_EQ(Module1::WholePart(-2.5), -2);
    EXPECT_EQ(Module1::HundredthsText(-0.05), u"0-5"_s);
    EXPECT_EQ(Module1::HundredthsText(-2.5), u"0-50"_s);
}

TEST(Measures, OverflowBeyond32BitHundredths)
{
    EXPECT_EQ(errorOf([] { Module1::WholePart(32768); }), runtime::Overflow);
    EXPECT_EQ(Module1::HundredthsText(32768), u"00"_s); // Only WholePart narrows to 16 bits.
    EXPECT_EQ(Module1::HundredthsText(21474836.47), u"47"_s);
    EXPECT_EQ(errorOf([] { Module1::HundredthsText(21474836.48); }), runtime::Overflow);
    EXPECT_EQ(errorOf([] { Module1::WholePart(1e300); }), runtime::Overflow);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(errorOf([nan] { Module1::HundredthsText(nan); }), runtime::Overflow);
}

TEST(Measures, ReadsHundredthsPlusWhole)
{
    EXPECT_EQ(Module1::ReadMeasure(u"120"_s, u"00"_s), 120);
    EXPECT_EQ(Module1::ReadMeasure(u"2"_s, u"50"_s), 2.5);
    EXPECT_EQ(Module1::ReadMeasure(u"2"_s, u"5"_s), 2.05); // One digit means hundredths.
    EXPECT_EQ(Module1::ReadMeasure(u"0"_s, u"07"_s), 0.07);
    // The sign applies only to the whole part.
    EXPECT_EQ(Module1::ReadMeasure(u"-2"_s, u"50"_s), -1.5);
    EXPECT_EQ(Module1::ReadMeasure(u" 4 "_s, u"5."_s), 4.05);
    EXPECT_EQ(Module1::ReadMeasure(u"4"_s, u"80"_s), 0.8 + 4);
}

TEST(Measures, RefusesTextsThatAreNoNumbers)
{
    for (const QString& text : {u""_s, u" "_s, u"a"_s, u"1a"_s, u"--"_s, u"."_s, u"1 2"_s}) {
        EXPECT_EQ(errorOf([&] { Module1::ReadMeasure(text, u"00"_s); }), runtime::TypeMismatch)
            << text.toStdString();
        EXPECT_EQ(errorOf([&] { Module1::ReadMeasure(u"0"_s, text); }), runtime::TypeMismatch)
            << text.toStdString();
    }
}

} // namespace
