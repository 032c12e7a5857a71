#include "platform/dao/engine/row_bytes.h"

#include "support/printers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using dao::RowReader;
using dao::RowWriter;

namespace {

QByteArray hex(const RowWriter& row)
{
    return row.bytes().toByteArray().toHex(' ');
}

} // namespace

TEST(RowBytesTest, row_hasTheBytesOfABinaryCopy)
{
    RowWriter row;
    row.begin(3);
    row.addNull();
    row.addInt16(-1);
    row.addInt32(258);
    EXPECT_EQ(hex(row), "00 03 ff ff ff ff 00 00 00 02 ff ff 00 00 00 04 00 00 01 02");
    row.clear();
    row.begin(1);
    row.addDouble(-2.5); // The sign, the exponent 1024 and a fraction of a quarter.
    EXPECT_EQ(hex(row), "00 01 00 00 00 08 c0 04 00 00 00 00 00 00");
    row.clear();
    row.begin(2);
    row.addText(u"אz");
    row.addText(u"");
    EXPECT_EQ(hex(row), "00 02 00 00 00 03 d7 90 7a 00 00 00 00");
    row.clear();
    row.begin(1);
    row.addMoment(1); // One second after the start of 2000, which is a million microseconds.
    EXPECT_EQ(hex(row), "00 01 00 00 00 08 00 00 00 00 00 0f 42 40");
}

TEST(RowBytesTest, negativeZero_isWrittenAsZero)
{
    RowWriter negative;
    negative.addDouble(-0.0);
    RowWriter positive;
    positive.addDouble(0.0);
    EXPECT_EQ(hex(negative), hex(positive));
}

TEST(RowBytesTest, writtenRow_isReadFieldByField)
{
    RowWriter row;
    row.begin(6);
    row.addInt16(-32768);
    row.addNull();
    row.addInt32(-2147483647 - 1);
    row.addDouble(1.0 / 3);
    row.addText(u"שלום 𝄞");
    row.addMoment(-1);
    RowReader reader(row.bytes());
    EXPECT_EQ(dao::int16Of(reader.next().value()), -32768);
    EXPECT_FALSE(reader.next().has_value());
    EXPECT_EQ(dao::int32Of(reader.next().value()), -2147483647 - 1);
    EXPECT_EQ(dao::doubleOf(reader.next().value()), 1.0 / 3);
    EXPECT_EQ(QString::fromUtf8(reader.next().value()), u"שלום 𝄞"_s);
    EXPECT_EQ(dao::momentOf(reader.next().value()), -1);
}

TEST(RowBytesTest, momentWithAFraction_isRoundedDownToTheSecond)
{
    const QByteArray late = QByteArray::fromHex("00000000000f423f"); // 0.999999 s
    EXPECT_EQ(dao::momentOf(late), 0);
    const QByteArray before = QByteArray::fromHex("ffffffffffffffff"); // -0.000001 s
    EXPECT_EQ(dao::momentOf(before), -1);
    const QByteArray whole = QByteArray::fromHex("fffffffffff0bdc0"); // -1 s
    EXPECT_EQ(dao::momentOf(whole), -1);
}
