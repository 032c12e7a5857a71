#include "platform/controls/field_text.h"

#include <QDate>
#include <QLocale>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using controls::fieldText;

TEST(FieldText, FormatsAValueByItsType)
{
    EXPECT_EQ(fieldText({}), u""_s);
    EXPECT_EQ(fieldText({}, 2), u""_s);
    EXPECT_EQ(fieldText(u""_s), u""_s);
    EXPECT_EQ(fieldText(u"אור"_s), u"אור"_s);
    EXPECT_EQ(fieldText(58.15), u"58.15"_s);
    EXPECT_EQ(fieldText(92.0), u"92"_s);
    EXPECT_EQ(fieldText(-5), u"-5"_s);
    EXPECT_EQ(fieldText(QDate(2026, 3, 1)), u"01/03/2026"_s);
}

TEST(FieldText, RoundsToTheGivenDecimals)
{
    EXPECT_EQ(fieldText(120, 2), u"120.00"_s);
    EXPECT_EQ(fieldText(92.5, 2), u"92.50"_s);
    // Halves round away from zero, based on 15 significant digits.
    EXPECT_EQ(fieldText(2.005, 2), u"2.01"_s);
    EXPECT_EQ(fieldText(2.004, 2), u"2.00"_s);
    EXPECT_EQ(fieldText(0.999, 2), u"1.00"_s);
    EXPECT_EQ(fieldText(-7.5, 2), u"-7.50"_s);
    EXPECT_EQ(fieldText(-0.001, 2), u"0.00"_s); // A value that rounds to zero has no minus sign.
    EXPECT_EQ(fieldText(1234567.0, 2), u"1234567.00"_s);
    EXPECT_EQ(fieldText(u"x"_s, 2), u"x"_s);
}

TEST(FieldText, UsesTheLocalesDecimalSignAndAPlainMinus)
{
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(fieldText(-7.5, 2), u"-7,50"_s);
    EXPECT_EQ(fieldText(7.5), u"7,5"_s);
    QLocale::setDefault(QLocale(QLocale::Hebrew));
    EXPECT_EQ(fieldText(-7.5, 2), u"-7.50"_s);
    EXPECT_EQ(fieldText(-5), u"-5"_s);
    QLocale::setDefault(QLocale::c());
}

TEST(FieldText, HebrewTextReadsRightToLeft)
{
    EXPECT_TRUE(controls::readsRightToLeft(u"10 חלון"_s));
    EXPECT_TRUE(controls::readsRightToLeft(u"U 7 סדרה"_s));
    EXPECT_FALSE(controls::readsRightToLeft(u"-5"_s));
    EXPECT_FALSE(controls::readsRightToLeft(u"series 7000"_s));
    EXPECT_FALSE(controls::readsRightToLeft(u""_s));
}
