#include "platform/runtime/conversions.h"
#include "platform/runtime/run_time_error.h"
#include "support/errors.h"

#include <QDateTime>
#include <QLocale>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace runtime;
using testsupport::errorOf;
using namespace Qt::StringLiterals;

namespace {

/// Sets the system locale for one test.
class Region
{
public:
    explicit Region(const QLocale& locale) { QLocale::setDefault(locale); }
    ~Region() { QLocale::setDefault(QLocale::c()); }
    Region(const Region&) = delete;
    Region& operator=(const Region&) = delete;
};

const QLocale decimalComma(QLocale::German, QLocale::Germany);
const QLocale hebrew(QLocale::Hebrew, QLocale::Israel);

int errorOfText(const QString& text)
{
    return errorOf([&] { toDouble(text); });
}

struct Case
{
    const char16_t* text;
    double value;
};

TEST(TextToNumber, AcceptsBlanksSignDigitsDecimalSignAndExponent)
{
    const Case cases[] = {
        {u"0", 0},     {u"00", 0},     {u"07", 7},       {u"120", 120},  {u"+5", 5},
        {u"-5", -5},   {u" 5 ", 5},    {u"\t5", 5},      {u"1.5", 1.5},  {u".5", 0.5},
        {u"5.", 5},    {u"-.5", -0.5}, {u"1e2", 100},    {u"1E+2", 100}, {u"1.5e-1", 0.15},
        {u"0.1", 0.1}, {u"999", 999},  {u"-2.50", -2.5}, {u"+0.00", 0},  {u"1e-999", 0},
    };
    for (const Case& each : cases)
        EXPECT_EQ(toDouble(QString::fromUtf16(each.text)), each.value)
            << qPrintable(QString::fromUtf16(each.text));
}

TEST(TextToNumber, NonNumbersThrowTypeMismatch)
{
    const char16_t* cases[] = {
        u"",    u" ",   u".",   u"+",       u"-",       u"--5", u"+-5",   u"5-",
        u"- 5", u"1 2", u"1a",  u"a",       u"x",       u"1,5", u"1,000", u"1.2.3",
        u"e5",  u"1e",  u"1e+", u"1e2.5",   u"0x1",     u"inf", u"nan",   u"1d2",
        u"٣",   u"א",   u"５",  u"\u200e5", u"5\u200f", u"5%",
    };
    for (const char16_t* each : cases)
        EXPECT_EQ(errorOfText(QString::fromUtf16(each)), TypeMismatch)
            << qPrintable(QString::fromUtf16(each));
}

TEST(TextToNumber, TooLargeNumbersThrowOverflow)
{
    EXPECT_EQ(errorOfText(u"1e999"_s), Overflow);
    EXPECT_EQ(errorOfText(u"-1e999"_s), Overflow);
}

TEST(TextToNumber, AcceptsTheLocalesDecimalSignAndThePoint)
{
    const Region region(decimalComma);
    EXPECT_EQ(toDouble(u"1,5"_s), 1.5);
    EXPECT_EQ(toDouble(u"1.5"_s), 1.5);
    EXPECT_EQ(errorOfText(u"1.000,5"_s), TypeMismatch);
}

TEST(ValueToNumber, ConvertsNullNumbersTextsAndBooleans)
{
    EXPECT_EQ(errorOf([] { toDouble(QVariant()); }), InvalidUseOfNull);
    EXPECT_EQ(toDouble(QVariant(7)), 7);
    EXPECT_EQ(toDouble(QVariant(2.5)), 2.5);
    EXPECT_EQ(toDouble(QVariant(u"6.5"_s)), 6.5);
    EXPECT_EQ(toDouble(QVariant(true)), -1);
    EXPECT_EQ(errorOf([] { toDouble(QVariant(u""_s)); }), TypeMismatch);
    EXPECT_EQ(errorOf([] { toDouble(QVariant(QDate(2026, 3, 1))); }), TypeMismatch);
}

TEST(Narrowing, RoundsHalfToEven)
{
    const std::pair<double, int> cases[] = {
        {20.5, 20}, {21.5, 22}, {20.6, 21},  {-0.5, 0},
        {-1.5, -2}, {0.5, 0},   {2.4999, 2}, {-20.5, -20},
    };
    for (const auto& [value, rounded] : cases) {
        EXPECT_EQ(toInt16(value), rounded) << value;
        EXPECT_EQ(toInt32(value), rounded) << value;
    }
}

TEST(Narrowing, NumbersOutsideTheRangeThrowOverflow)
{
    EXPECT_EQ(toInt16(32767.4), 32767);
    EXPECT_EQ(toInt16(-32768.5), -32768);
    EXPECT_EQ(errorOf([] { toInt16(32767.5); }), Overflow);
    EXPECT_EQ(errorOf([] { toInt16(-32769.0); }), Overflow);
    EXPECT_EQ(toInt32(2147483647.0), 2147483647);
    EXPECT_EQ(errorOf([] { toInt32(2147483648.0); }), Overflow);
    EXPECT_EQ(errorOf([] { toInt32(std::nan("")); }), Overflow);
    EXPECT_EQ(errorOf([] { toInt32(std::numeric_limits<double>::infinity()); }), Overflow);
    EXPECT_EQ(errorOf([] { toInt16(QVariant()); }), InvalidUseOfNull);
}

TEST(NumberToText, HasAtMostFifteenSignificantDigits)
{
    const std::pair<double, const char16_t*> cases[] = {
        {92, u"92"},         {58.15, u"58.15"},
        {116.3, u"116.3"},   {-2.5, u"-2.5"},
        {0, u"0"},           {-0.0, u"0"},
        {1234.5, u"1234.5"}, {1.0 / 3, u"0.333333333333333"},
        {0.1 + 0.2, u"0.3"}, {120.5 - 4.2, u"116.3"},
        {1e15, u"1E+15"},    {123456789012345.0, u"123456789012345"},
        {0.0001, u"0.0001"}, {0.00001, u"1E-05"},
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(toText(value), QString::fromUtf16(text)) << value;
}

TEST(NumberToText, UsesTheLocalesDecimalSignWithoutGroups)
{
    const Region region(decimalComma);
    EXPECT_EQ(toText(58.15), u"58,15"_s);
    EXPECT_EQ(toText(1234567.5), u"1234567,5"_s);
}

TEST(NumberToText, HasNoDirectionMarkBeforeAMinus)
{
    const Region region(hebrew);
    EXPECT_EQ(toText(-2.5), u"-2.5"_s);
    EXPECT_EQ(toDouble(u"-2.5"_s), -2.5);
}

TEST(ValueToText, FormatsFieldValues)
{
    EXPECT_EQ(toText(QVariant(7)), u"7"_s);
    EXPECT_EQ(toText(QVariant(u"לבן"_s)), u"לבן"_s);
    EXPECT_EQ(toText(QVariant(QDate(2026, 3, 1))), u"01/03/2026"_s);
    EXPECT_EQ(errorOf([] { toText(QVariant()); }), InvalidUseOfNull);
}

TEST(ShortDate, HasAFourDigitYearInEveryRegion)
{
    const QDate day(2026, 3, 1);
    EXPECT_EQ(toShortDate(day), u"01/03/2026"_s);
    {
        const Region region(hebrew);
        EXPECT_EQ(toShortDate(day), u"1.3.2026"_s);
    }
    const Region region(decimalComma);
    EXPECT_EQ(toShortDate(day), u"01.03.2026"_s);
}

} // namespace
