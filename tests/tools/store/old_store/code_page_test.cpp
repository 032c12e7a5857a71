#include "tools/store/old_store/code_page.h"

#include "platform/runtime/run_time_error.h"
#include "support/printers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using storetools::CodePage;

TEST(CodePageTest, DecodesHebrew)
{
    const CodePage hebrew(u"1255"_s);
    EXPECT_EQ(hebrew.decoded("\xe0\xec\xe5\xee\xe9\xf0\xe9\xe5\xed 35\xb0"), u"אלומיניום 35°"_s);
    EXPECT_EQ(hebrew.decoded("\xe0\xfa\xf9\xfe"), u"אתש\u200f"_s);
    EXPECT_EQ(hebrew.decoded(""), u""_s);
}

TEST(CodePageTest, DecodesEachByteToOneCharacter)
{
    // A letter with a point, which some converters replace by a single character.
    EXPECT_EQ(CodePage(u"1255"_s).decoded("\xe1\xcc\xf9\xd1"), u"\u05d1\u05bc\u05e9\u05c1"_s);
}

TEST(CodePageTest, ReportsTheInvalidByte)
{
    const CodePage hebrew(u"1255"_s);
    try {
        hebrew.decoded("\xe0\xe1\xff");
        FAIL();
    } catch (const runtime::RunTimeError& error) {
        EXPECT_EQ(error.number(), runtime::DataTypeConversion);
        EXPECT_EQ(error.description(), u"byte 255 at 3 is no character of code page 1255"_s);
    }
}

TEST(CodePageTest, AcceptsOtherCodePagesByNumberAndName)
{
    EXPECT_EQ(CodePage(u"1251"_s).decoded("\xcb\xe5\xe2"), u"Лев"_s);
    EXPECT_EQ(CodePage(u"862"_s).decoded("\x80\x9a"), u"את"_s);
    EXPECT_EQ(CodePage(u"ISO-8859-8"_s).decoded("\xe0"), u"א"_s);
}

TEST(CodePageTest, RefusesUnsupportedCodePages)
{
    for (const QString& name :
         {u""_s, u"12x55"_s, u"99999"_s, u"932"_s, u"UTF-8"_s, u"UTF-16LE"_s}) {
        try {
            const CodePage page(name);
            // The empty name selects the system's own encoding.
            EXPECT_TRUE(name.isEmpty()) << name.toStdString();
        } catch (const runtime::RunTimeError& error) {
            EXPECT_EQ(error.number(), runtime::InvalidProcedureCall) << name.toStdString();
        }
    }
}
