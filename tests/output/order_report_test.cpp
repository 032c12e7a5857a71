#include "output/order_report.h"

#include "platform/runtime/run_time_error.h"

#include <QStringList>

#include <gtest/gtest.h>

using namespace report;
using namespace Qt::StringLiterals;

namespace {

// The report's layout, one control per line: name, caption in quotes or field, left, top, width and
// height in twips, font size, alignment, style.
constexpr const char* drawnHeader = R"table(
ImageCompanyLogo | image | 30 105 10710 2010
Line8 | line | 30 2190 10770 0
Label1 | "תאריך הזמנה" | 0 2235 2265 300 | 15.75 bold | centre | right-to-left
LabelDate | "%d" | 270 2595 1695 300 | 14.25 bold | centre | -
Label34 | "מס' הזמנה:" | 5520 2325 1695 300 | 15.75 bold | right | right-to-left
LabelOrder_Num | "" | 4380 2325 1140 300 | 15.75 bold | centre | right-to-left, boxed
Label18 | "עבור לקוח :" | 9060 2895 1500 240 | 14.25 bold | right | right-to-left
LabelClientName | "" | 3885 2910 5055 240 | 14.25 bold | right | right-to-left
Label20 | "כתובת :" | 9180 3270 1395 240 | 14.25 bold | right | right-to-left
LabelAddress | "" | 3885 3285 5070 240 | 14.25 bold | right | right-to-left
Label22 | "טלפון :" | 9120 3615 1455 240 | 14.25 bold | right | right-to-left
LabelTel | "" | 3885 3630 5070 240 | 14.25 bold | right | right-to-left
)table";

constexpr const char* drawnDetail = R"table(
Line4 | line | 0 0 10772 0
Line6 | line | 0 2238 10772 0
Line3 | line | 0 0 0 2238
Line5 | line | 10772 0 0 2250
Line2 | line | 5040 0 0 1800
Line7 | line | 8736 654 0 1596
Line1 | line | 0 1794 8748 0
Label35 | "מס' פריט :" | 9510 30 1194 240 | 12 bold | right | right-to-left
Text24 | Num | 8868 30 564 240 | 12 bold | centre | right-to-left, boxed
Label33 | "בתאריך :" | 7740 30 900 300 | 12 bold | right | right-to-left
Text3 | Order_Date | 6180 30 1560 300 | 12 | centre | -
Label5 | "סדרה:" | 10035 324 693 300 | 12 bold underlined | right | right-to-left
Text1 | Name | 5112 324 4908 300 | 12 bold | right | right-to-left
Text2 | Kind | 8736 624 2028 606 | 11.25 bold | centre | right-to-left, boxed
Label6 | "רוחב " | 6024 588 612 300 | 12 underlined | right | -
Label7 | "גובה " | 5064 588 624 300 | 12 underlined | right | -
Label2 | "פתח אור :" | 6948 852 1512 300 | 11.25 underlined | right | right-to-left
Width1 | MyWidth | 6096 852 804 240 | 12 | centre | -
Height1 | MYHeight | 5136 852 804 240 | 12 | centre | -
Label17 | "פתח פנימי  :" | 6972 1092 1500 300 | 11.25 underlined | right | right-to-left
Width2 | MyWidth_2 | 6108 1152 804 252 | 12 | centre | -
Height2 | MYHeight_2 | 5148 1152 804 252 | 12 | centre | -
Label31 | " ארגז מונו בלוק :" | 6972 1404 1500 300 | 11.25 underlined | right | right-to-left
Text31 | Argaz_Width | 6132 1464 804 240 | 12 | centre | -
Text32 | Argaz_Height | 5172 1464 804 240 | 12 | centre | -
Label8 | "רוחב" | 3527 50 585 300 | 12 bold underlined | right | right-to-left
Label9 | "גובה" | 2961 50 555 300 | 12 bold underlined | right | -
Label10 | "כמות" | 2394 50 570 300 | 12 bold underlined | centre | right-to-left
Label11 | "סוג" | 1300 50 585 300 | 12 bold underlined | right | right-to-left
Label12 | "צבע" | 200 50 570 300 | 12 bold underlined | right | right-to-left
Label13 | "משקוף" | 4296 360 696 300 | 12 bold underlined | left | -
Label14 | "כנף" | 4296 636 696 300 | 12 bold underlined | left | -
Label16 | "רשת" | 4296 960 696 300 | 12 bold underlined | left | -
Label15 | "זכוכית" | 4296 1260 696 300 | 12 bold underlined | left | -
Text4 | Mashkof_W | 3588 420 600 300 | 12 | right | boxed
Text5 | Mashkof_H | 3012 420 576 300 | 12 | right | boxed
Text6 | Mahkof_Count | 2388 420 600 300 | 12 | centre | boxed
Text7 | Mashof_Kind | 1200 420 1200 300 | 12 | right | boxed
Text8 | Mahkof_Color | 0 420 1200 300 | 12 | right | boxed
Text9 | Kanaf_W | 3588 684 600 300 | 12 | right | boxed
Text10 | Kanaf_H | 3012 684 576 300 | 12 | right | boxed
Text11 | Kanaf_Count | 2388 684 600 300 | 12 | centre | boxed
Text12 | Kanaf_Kind | 1200 684 1200 300 | 12 | right | boxed
Text13 | Kanaf_Color | 0 684 1200 300 | 12 | right | boxed
Text19 | Reshet_W | 3588 984 600 300 | 12 | right | boxed
Text20 | Reshet_H | 3012 984 576 300 | 12 | right | boxed
Text21 | Reshet_Count | 2388 984 600 300 | 12 | centre | boxed
Text22 | Reshet_Kind | 1200 984 1200 300 | 12 | right | boxed
Text23 | Reshet_Color | 0 984 1200 300 | 12 | right | boxed
Text14 | Glass_W | 3588 1320 600 300 | 12 | right | boxed
Text15 | Glass_H | 3012 1320 576 300 | 12 | right | boxed
Text16 | Glass_Count | 2388 1320 600 300 | 12 | centre | boxed
Text17 | Glass_Kind | 1200 1320 1200 300 | 12 | right | boxed
Text18 | Glass_Color | 0 1320 1200 300 | 12 | right | boxed
Label25 | "עובי U" | 7956 1848 696 300 | 12 bold underlined | centre | right-to-left
Text25 | U_Thick | 7452 1848 504 300 | 12 | centre | right-to-left
Label26 | "חיתוך U" | 6600 1848 900 300 | 12 bold underlined | centre | right-to-left
Text26 | U_Cut | 6156 1848 492 300 | 12 | centre | right-to-left
Label27 | "וזה U" | 5556 1848 564 300 | 12 bold underlined | centre | right-to-left
Text27 | U_Vasa | 5088 1836 504 300 | 12 | centre | right-to-left
Label29 | "רוחב שלב" | 3708 1872 1140 300 | 12 bold underlined | centre | right-to-left
Text29 | Shalav_Width | 3216 1872 492 300 | 12 | centre | right-to-left
Label30 | "כמות שלב" | 2016 1872 1140 300 | 12 bold underlined | centre | right-to-left
Text30 | Shalav_Count | 1512 1872 504 300 | 12 | centre | right-to-left
Label28 | "עובי שלב" | 408 1872 1140 300 | 12 bold underlined | centre | right-to-left
Text28 | Shalav_Thick | 12 1872 504 300 | 12 | centre | right-to-left
)table";

constexpr const char* drawnFooter = R"table(
Label4 | "דף מספר :" | 5484 0 1128 300 | 14.25 | left | right-to-left
Label3 | "%p" | 4944 0 540 300 | 14.25 | right | -
Label37 | "מתוך :" | 4164 0 768 300 | 14.25 | left | right-to-left
Label36 | "%P" | 3624 0 540 300 | 14.25 | right | -
)table";

QString sizeText(const ControlDesign& control)
{
    QString text = QString::number(control.points);
    if ((control.style & Style::Bold) != 0)
        text += u" bold"_s;
    if ((control.style & Style::Underlined) != 0)
        text += u" underlined"_s;
    return text;
}

QString styleText(const ControlDesign& control)
{
    QStringList styles;
    if ((control.style & Style::RightToLeft) != 0)
        styles += u"right-to-left"_s;
    if ((control.style & Style::Boxed) != 0)
        styles += u"boxed"_s;
    return styles.isEmpty() ? u"-"_s : styles.join(u", "_s);
}

/// Returns a control in the notation of the tables above.
QString described(const ControlDesign& control)
{
    static const QStringList alignments{u"left"_s, u"right"_s, u"centre"_s};
    const QString place =
        u"%1 %2 %3 %4"_s.arg(control.left).arg(control.top).arg(control.width).arg(control.height);
    switch (control.kind) {
    case Kind::Line:
        return u"%1 | line | %2"_s.arg(control.name, place);
    case Kind::Image:
        return u"%1 | image | %2"_s.arg(control.name, place);
    default:
        break;
    }
    const QString text = control.kind == Kind::Label ? u'"' + control.text.toString() + u'"'
                                                     : control.text.toString();
    return u"%1 | %2 | %3 | %4 | %5 | %6"_s.arg(control.name, text, place, sizeText(control),
                                                alignments[static_cast<int>(control.align)],
                                                styleText(control));
}

QStringList sortedLines(const char* drawing)
{
    QStringList lines = QString::fromUtf8(drawing).split(u'\n', Qt::SkipEmptyParts);
    lines.sort();
    return lines;
}

void expectDrawn(const SectionDesign& section, const char* drawing)
{
    QStringList found;
    for (const ControlDesign& control : section.controls)
        found += described(control);
    found.sort();
    const QStringList drawn = sortedLines(drawing);
    ASSERT_EQ(found.size(), drawn.size());
    for (qsizetype i = 0; i < drawn.size(); ++i)
        EXPECT_EQ(found[i].toStdString(), drawn[i].toStdString());
}

TEST(OrderReport, SectionsAreInDesignOrder)
{
    const auto& sections = output::orderReportDesign.sections;
    ASSERT_EQ(sections.size(), 5u);
    const QStringList names{u"Section4"_s, u"Section2"_s, u"Section1"_s, u"Section3"_s,
                            u"Section5"_s};
    const int heights[] = {0, 4020, 2250, 450, 0};
    const std::size_t counts[] = {0, 12, 66, 4, 0};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(sections[i].name, names[static_cast<int>(i)]);
        EXPECT_EQ(sections[i].height, heights[i]);
        EXPECT_EQ(sections[i].controls.size(), counts[i]);
    }
    EXPECT_EQ(sections[1].role, Role::PageHeader);
    EXPECT_EQ(sections[2].role, Role::Detail);
    EXPECT_EQ(sections[3].role, Role::PageFooter);
}

TEST(OrderReport, SettingsAreThoseOfTheDesign)
{
    const ReportDesign& design = output::orderReportDesign;
    EXPECT_EQ(design.name, u"DataReport1");
    EXPECT_EQ(design.caption, u" דו\"ח הזמנות");
    EXPECT_EQ(design.fontFamily, u"David");
    EXPECT_EQ(design.width, 10800);
    EXPECT_EQ(design.leftMargin, 500);
    EXPECT_EQ(design.rightMargin, 500);
    EXPECT_EQ(design.topMargin, 1440);
    EXPECT_EQ(design.bottomMargin, 1440);
}

TEST(OrderReport, ControlsHaveTheirDesignedGeometry)
{
    const auto& sections = output::orderReportDesign.sections;
    expectDrawn(sections[1], drawnHeader);
    expectDrawn(sections[2], drawnDetail);
    expectDrawn(sections[3], drawnFooter);
}

TEST(OrderReport, DataReport1IsASingleInstance)
{
    DataReport& first = output::dataReport1();
    first.Sections(2).Controls(u"LabelOrder_Num"_s).setCaption(u"17"_s);
    DataReport& second = output::dataReport1();
    EXPECT_EQ(&first, &second);
    EXPECT_EQ(second.Sections(2).Controls(u"LabelOrder_Num"_s).Caption(), u"17"_s);
}

TEST(OrderReport, SectionsAreCountedFromOne)
{
    DataReport& report = output::dataReport1();
    EXPECT_EQ(report.Sections(1).design().name, u"Section4");
    EXPECT_EQ(report.Sections(5).design().name, u"Section5");
    for (const int outside : {-1, 0, 6}) {
        try {
            report.Sections(outside);
            FAIL() << outside;
        } catch (const runtime::RunTimeError& error) {
            EXPECT_EQ(error.number(), runtime::SubscriptOutOfRange);
        }
    }
}

} // namespace
