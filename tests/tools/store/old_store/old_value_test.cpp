#include "tools/store/old_store/old_value.h"

#include "platform/runtime/run_time_error.h"
#include "support/printers.h"

#include <QDateTime>

#include <gtest/gtest.h>

#include <bit>
#include <limits>

using namespace Qt::StringLiterals;
using namespace storetools;

namespace {

QVariant decoded(quint8 type, const QByteArray& bytes, OldFormat format = OldFormat::Jet4)
{
    return decodedValue(type, bytes, format, CodePage(u"1255"_s));
}

template <typename Number>
QByteArray bytesOf(Number number)
{
    return {reinterpret_cast<const char*>(&number), qsizetype{sizeof number}};
}

int errorOf(quint8 type, const QByteArray& bytes, OldFormat format = OldFormat::Jet4)
{
    try {
        decoded(type, bytes, format);
    } catch (const runtime::RunTimeError& error) {
        return error.number();
    }
    return 0;
}

} // namespace

TEST(OldValueTest, ReadsWholeNumbers)
{
    EXPECT_EQ(decoded(OldByte, "\xff"), 255);
    EXPECT_EQ(decoded(OldInteger, QByteArray("\xfe\xff", 2)), -2);
    EXPECT_EQ(decoded(OldInteger, QByteArray("\x00\x80", 2)), -32768);
    EXPECT_EQ(decoded(OldLong, QByteArray("\x01\x00\x01\x00", 4)), 65537);
    EXPECT_EQ(decoded(OldLong, QByteArray("\xff\xff\xff\xff", 4)), -1);
    EXPECT_EQ(decoded(OldBoolean, QByteArray(1, '\1')), -1);
    EXPECT_EQ(decoded(OldBoolean, QByteArray(1, '\0')), 0);
}

TEST(OldValueTest, SingleBecomesTheDoubleWithTheSameShortestText)
{
    for (const double number : {48.35, -999.99, 0.05, 0.1, 132.73, 1e-7, 16777216.0, 3e38})
        EXPECT_EQ(decoded(OldSingle, bytesOf(static_cast<float>(number))), number);
    EXPECT_FALSE(std::signbit(decoded(OldSingle, bytesOf(-0.0F)).toDouble()));
}

TEST(OldValueTest, DoubleKeepsEveryDigit)
{
    for (const double number : {48.35, 0.1 + 0.2, -1e-300, 1.7976931348623157e308})
        EXPECT_EQ(decoded(OldDouble, bytesOf(number)), number);
    EXPECT_FALSE(std::signbit(decoded(OldDouble, bytesOf(-0.0)).toDouble()));
}

TEST(OldValueTest, ReadsCurrencyInTenThousandths)
{
    EXPECT_EQ(decoded(OldCurrency, bytesOf(qint64{123456})), 12.3456);
    EXPECT_EQ(decoded(OldCurrency, bytesOf(qint64{-1})), -0.0001);
    // The nearest double of 900719925474099.3001, although its number of ten-thousandths is not a
    // double.
    EXPECT_EQ(decoded(OldCurrency, bytesOf(qint64{9007199254740993001})), 900719925474099.3001);
}

TEST(OldValueTest, ReadsDates)
{
    EXPECT_EQ(decoded(OldDate, bytesOf(0.0)), QDate(1899, 12, 30));
    EXPECT_EQ(decoded(OldDate, bytesOf(36161.0)), QDate(1999, 1, 1));
    EXPECT_EQ(decoded(OldDate, bytesOf(-1.0)), QDate(1899, 12, 29));
    EXPECT_EQ(decoded(OldDate, bytesOf(36161.75)),
              QDateTime(QDate(1999, 1, 1), QTime(18, 0), Qt::UTC));
    // The time of day increases with the fraction, even in negative numbers.
    EXPECT_EQ(decoded(OldDate, bytesOf(-1.25)),
              QDateTime(QDate(1899, 12, 29), QTime(6, 0), Qt::UTC));
    // A time whose fraction is not exact, and a time that rounds up to midnight.
    EXPECT_EQ(decoded(OldDate, bytesOf(36161.0 + 1.0 / 86400)),
              QDateTime(QDate(1999, 1, 1), QTime(0, 0, 1), Qt::UTC));
    EXPECT_EQ(decoded(OldDate, bytesOf(36161.9999999)), QDate(1999, 1, 2));
    for (const double wrong : {1e9, -1e300, std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::infinity()})
        EXPECT_EQ(errorOf(OldDate, bytesOf(wrong)), runtime::DataTypeConversion);
}

TEST(OldValueTest, ReadsPlainAndCompressedUnicode)
{
    EXPECT_EQ(decoded(OldText, QByteArray("\xd0\x05\x41\x00", 4)), u"אA"_s);
    EXPECT_EQ(decoded(OldText, "\xff\xfe"
                               "A\xe9z"),
              u"A\u00e9z"_s);
    // A zero byte switches from one byte per character to two, and back.
    EXPECT_EQ(decoded(OldText, QByteArray("\xff\xfe"
                                          "8\0\xd0\x05\xd1\x05\0"
                                          "6",
                                          10)),
              u"8אב6"_s);
    EXPECT_EQ(decoded(OldMemo, QByteArray("\xff\xfe"
                                          "ab",
                                          4)),
              u"ab"_s);
    EXPECT_EQ(decoded(OldText, ""), u""_s);
    EXPECT_TRUE(decoded(OldText, "").isValid());
}

TEST(OldValueTest, RefusesBrokenUnicode)
{
    EXPECT_EQ(errorOf(OldText, QByteArray("\xd0\x05\x41", 3)), runtime::DataTypeConversion);
    EXPECT_EQ(errorOf(OldText, QByteArray("\xff\xfe\0\xd0", 4)), runtime::DataTypeConversion);
    EXPECT_EQ(errorOf(OldText, QByteArray("\x00\xd8\x41\x00", 4)), runtime::DataTypeConversion);
}

TEST(OldValueTest, ReadsJet3TextsWithTheirCodePage)
{
    EXPECT_EQ(decoded(OldText, "\xf9\xec\xe5\xed", OldFormat::Jet3), u"שלום"_s);
    EXPECT_EQ(decoded(OldMemo, "\xf9 \"\xe0\"", OldFormat::Jet3), u"ש \"א\""_s);
    EXPECT_EQ(errorOf(OldText, "\x81", OldFormat::Jet3), runtime::DataTypeConversion);
}

TEST(OldValueTest, RefusesInvalidBytesOfAType)
{
    EXPECT_EQ(errorOf(OldLong, "ab"), runtime::DataTypeConversion);
    EXPECT_EQ(errorOf(OldSingle, ""), runtime::DataTypeConversion);
    EXPECT_EQ(errorOf(OldDouble, "abcd"), runtime::DataTypeConversion);
    EXPECT_EQ(errorOf(OldBoolean, ""), runtime::DataTypeConversion);
}

TEST(OldValueTest, RefusesUnsupportedTypes)
{
    for (const quint8 type : {0, 9, 11, 15, 16, 18, 255})
        EXPECT_EQ(errorOf(type, "x"), runtime::DataTypeConversion) << int{type};
}
