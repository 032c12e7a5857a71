#include "platform/report/report_text.h"

#include <QDate>

#include <gtest/gtest.h>

using namespace report;
using namespace Qt::StringLiterals;

namespace {

TEST(ReportText, FormatsValuesAsStored)
{
    const struct
    {
        QVariant value;
        QString text;
    } cases[] = {
        {QVariant(), u""_s},
        {QVariant(QString()), u""_s},
        {u" לבן "_s, u" לבן "_s},
        {0.0, u"0"_s},
        {-0.0, u"0"_s},
        {12.5, u"12.5"_s},
        {100.0, u"100"_s},
        {-3.25, u"-3.25"_s},
        {1.0 / 3, u"0.333333333333333"_s},
        {26, u"26"_s},
        {QDate(2026, 3, 1), u"01/03/2026"_s},
    };
    for (const auto& each : cases)
        EXPECT_EQ(valueText(each.value).toStdString(), each.text.toStdString());
}

TEST(ReportText, TextWithoutLettersReadsLeftToRight)
{
    for (const QString& text :
         {u"-5"_s, u"12.5"_s, u"03-1234567"_s, u"+972 50 123"_s, u"01/03/2026"_s, u""_s, u"(5)"_s})
        EXPECT_EQ(displayText(text, true), (DisplayText{text, false})) << text.toStdString();
}

TEST(ReportText, TextWithLettersHasTheControlsDirection)
{
    EXPECT_EQ(displayText(u"לבן"_s, true), (DisplayText{u"לבן"_s, true}));
    EXPECT_EQ(displayText(u"לבן"_s, false), (DisplayText{u"לבן"_s, false}));
    EXPECT_EQ(displayText(u"PVC 12"_s, true), (DisplayText{u"PVC 12"_s, true}));
    EXPECT_EQ(displayText(u"רשת 120-B לבן"_s, true), (DisplayText{u"רשת 120-B לבן"_s, true}));
}

TEST(ReportText, SignStaysInFrontOfItsNumber)
{
    const QString mark = QChar(0x200e);
    EXPECT_EQ(displayText(u"מידה -5"_s, true).text, u"מידה "_s + mark + u"-5"_s);
    EXPECT_EQ(displayText(u"-5 מידה +3.5"_s, true).text, mark + u"-5 מידה "_s + mark + u"+3.5"_s);
    // A hyphen between a word and a number, and a separate dash, are not signs.
    EXPECT_EQ(displayText(u"סדרה-7000"_s, true).text, u"סדרה-7000"_s);
    EXPECT_EQ(displayText(u"הרצל 12-14"_s, true).text, u"הרצל 12-14"_s);
    EXPECT_EQ(displayText(u"חלון - דלת"_s, true).text, u"חלון - דלת"_s);
}

TEST(ReportText, LineBreaksBecomeSpaces)
{
    EXPECT_EQ(displayText(u"א\nב\tג"_s, true).text, u"א ב ג"_s);
    const QString separated = u"א"_s + QChar(0x2028) + u"ב"_s + QChar(0x2029) + u"ג"_s;
    EXPECT_EQ(displayText(separated, true).text, u"א ב ג"_s);
}

} // namespace
