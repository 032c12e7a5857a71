#include "shop/csv.h"

#include "support/printers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(CsvTest, Cells_HaveQuotesOnlyIfNeeded)
{
    EXPECT_EQ(shop::csvText({{u"a"_s, u"b,c"_s}, {u"ד\"ה"_s, u"x\ny"_s, QString()}}),
              QByteArray("\xEF\xBB\xBF"
                         "a,\"b,c\"\r\n\"ד\"\"ה\",\"x\ny\",\r\n"));
}

TEST(CsvTest, WrittenRows_ReadBack)
{
    const QList<QStringList> rows{
        {u"חלון"_s, u"a,b"_s, u"\"\""_s}, {u"\r\n"_s, QString(), u" x "_s}, {QString()}};
    EXPECT_EQ(shop::readCsv(shop::csvText(rows)), rows);
}

TEST(CsvTest, AnyLineEndsAndAMissingLastOne_AreRead)
{
    const QList<QStringList> rows{{u"a"_s, u"b"_s}, {u"c"_s, QString()}};
    for (const char* text : {"a,b\r\nc,\r\n", "a,b\nc,\n", "a,b\rc,\r", "a,b\r\nc,",
                             "\xEF\xBB\xBF"
                             "a,b\nc,"})
        EXPECT_EQ(shop::readCsv(text), rows) << text;
    EXPECT_EQ(shop::readCsv(""), QList<QStringList>());
}

TEST(CsvTest, InvalidText_IsRefused)
{
    for (const char* text : {"\"a", "a\"b", "\"a\"b", "\xFF"})
        EXPECT_EQ(shop::readCsv(text), std::nullopt) << text;
}

TEST(CsvTest, TextThatLooksLikeAFormula_GetsAnApostrophe)
{
    for (const QString& text : {u"=1"_s, u"+1"_s, u"-1"_s, u"@a"_s, u"\ta"_s, u"\ra"_s})
        EXPECT_EQ(shop::textCell(text), u'\'' + text);
    for (const QString& text : {QString(), u"a=1"_s, u"'=1"_s, u" =1"_s, u"\na"_s, u"רגיל"_s})
        EXPECT_EQ(shop::textCell(text), text);
}
