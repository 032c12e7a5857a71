#include "catalogue/deductions.h"
#include "platform/runtime/run_time_error.h"

#include <gtest/gtest.h>

using namespace catalogue;
using namespace Qt::StringLiterals;

namespace {

struct SplitCase
{
    double value;
    QString sign;
    QString whole;
    QString hundredths;
};

TEST(Deductions, SplitIntoSignWholeAndHundredths)
{
    const SplitCase cases[] = {
        {-2.5, u"-"_s, u"2"_s, u"50"_s},      {0.05, u"+"_s, u"0"_s, u"05"_s},
        {12, u"+"_s, u"12"_s, u"00"_s},       {0, u"-"_s, u"0"_s, u"00"_s},
        {-0.0, u"-"_s, u"0"_s, u"00"_s},      {2.999, u"+"_s, u"3"_s, u"00"_s},
        {-0.05, u"-"_s, u"0"_s, u"05"_s},     {-999.99, u"-"_s, u"999"_s, u"99"_s},
        {999.99, u"+"_s, u"999"_s, u"99"_s},  {-0.004, u"-"_s, u"0"_s, u"00"_s},
        {0.001, u"+"_s, u"0"_s, u"00"_s},     {-7.1, u"-"_s, u"7"_s, u"10"_s},
        {1234.5, u"+"_s, u"1234"_s, u"50"_s},
    };
    for (const SplitCase& each : cases) {
        const DeductionText text = splitDeduction(each.value);
        EXPECT_EQ(text.sign, each.sign) << each.value;
        EXPECT_EQ(text.whole, each.whole) << each.value;
        EXPECT_EQ(text.hundredths, each.hundredths) << each.value;
    }
}

TEST(Deductions, OverflowBeyond16BitWholePart)
{
    for (const double value : {32768.0, -32768.0, 3e7, -1e300}) {
        try {
            splitDeduction(value);
            ADD_FAILURE() << value << " was split";
        } catch (const runtime::RunTimeError& error) {
            EXPECT_EQ(error.number(), runtime::Overflow);
        }
    }
}

TEST(Deductions, JoinDoesNotValidateTheTexts)
{
    EXPECT_EQ(joinDeduction({u"-"_s, u"2"_s, u"50"_s}), u"-2.50"_s);
    EXPECT_EQ(joinDeduction({u"+"_s, u"0"_s, u"00"_s}), u"+0.00"_s);
    EXPECT_EQ(joinDeduction({u"+"_s, u"2"_s, u"5"_s}), u"+2.5"_s);
    EXPECT_EQ(joinDeduction({u"x"_s, u"1a"_s, u""_s}), u"x1a."_s);
    EXPECT_EQ(joinDeduction({u""_s, u""_s, u""_s}), u"."_s);
}

} // namespace
