#include "output/order_report_design.h"

namespace output {

namespace {

using namespace report;
using enum Kind;
using enum Align;

// clang-format off
constexpr ControlDesign pageHeader[] = {
    // Each row of this table describes a control: kind, name, caption or field name, left edge, top
    // edge, width, height, font size in points, alignment and style.
    {Image, u"ImageCompanyLogo",  u"",                   30,  105, 10710, 2010},
    {Line,  u"Line8",             u"",                   30, 2190, 10770,    0},
    {Label, u"Label1",            u"תאריך הזמנה",         0, 2235,  2265,  300, 15.75, Centre, Bold | RightToLeft},
    {Label, u"LabelDate",         u"%d",                270, 2595,  1695,  300, 14.25, Centre, Bold},
    {Label, u"Label34",           u"מס' הזמנה:",       5520, 2325,  1695,  300, 15.75, Right,  Bold | RightToLeft},
    {Label, u"LabelOrder_Num",    u"",                 4380, 2325,  1140,  300, 15.75, Centre, Bold | RightToLeft | Boxed},
    {Label, u"Label18",           u"עבור לקוח :",      9060, 2895,  1500,  240, 14.25, Right,  Bold | RightToLeft},
    {Label, u"LabelClientName",   u"",                 3885, 2910,  5055,  240, 14.25, Right,  Bold | RightToLeft},
    {Label, u"Label20",           u"כתובת :",          9180, 3270,  1395,  240, 14.25, Right,  Bold | RightToLeft},
    {Label, u"LabelAddress",      u"",                 3885, 3285,  5070,  240, 14.25, Right,  Bold | RightToLeft},
    {Label, u"Label22",           u"טלפון :",          9120, 3615,  1455,  240, 14.25, Right,  Bold | RightToLeft},
    {Label, u"LabelTel",          u"",                 3885, 3630,  5070,  240, 14.25, Right,  Bold | RightToLeft},
};

constexpr ControlDesign detail[] = {
    // Lines around and inside the block that the report prints for each order line.
    {Line,  u"Line4",             u"",                    0,    0, 10772,    0},
    {Line,  u"Line6",             u"",                    0, 2238, 10772,    0},
    {Line,  u"Line3",             u"",                    0,    0,     0, 2238},
    {Line,  u"Line5",             u"",                10772,    0,     0, 2250},
    {Line,  u"Line2",             u"",                 5040,    0,     0, 1800},
    {Line,  u"Line7",             u"",                 8736,  654,     0, 1596},
    {Line,  u"Line1",             u"",                    0, 1794,  8748,    0},
    // Controls at the top right of an order line's block: line number, date, series and kind.
    {Label, u"Label35",           u"מס' פריט :",       9510,   30,  1194,  240,    12, Right,  Bold | RightToLeft},
    {Field, u"Text24",            u"Num",              8868,   30,   564,  240,    12, Centre, Bold | RightToLeft | Boxed},
    {Label, u"Label33",           u"בתאריך :",         7740,   30,   900,  300,    12, Right,  Bold | RightToLeft},
    {Field, u"Text3",             u"Order_Date",       6180,   30,  1560,  300,    12, Centre},
    {Label, u"Label5",            u"סדרה:",           10035,  324,   693,  300,    12, Right,  Bold | Underlined | RightToLeft},
    {Field, u"Text1",             u"Name",             5112,  324,  4908,  300,    12, Right,  Bold | RightToLeft},
    {Field, u"Text2",             u"Kind",             8736,  624,  2028,  606, 11.25, Centre, Bold | RightToLeft | Boxed},
    // Controls in the middle of an order line's block: the opening sizes. The columns from right to
    // left are caption, width and height.
    {Label, u"Label6",            u"רוחב ",            6024,  588,   612,  300,    12, Right,  Underlined},
    {Label, u"Label7",            u"גובה ",            5064,  588,   624,  300,    12, Right,  Underlined},
    {Label, u"Label2",            u"פתח אור :",        6948,  852,  1512,  300, 11.25, Right,  Underlined | RightToLeft},
    {Field, u"Width1",            u"MyWidth",          6096,  852,   804,  240,    12, Centre},
    {Field, u"Height1",           u"MYHeight",         5136,  852,   804,  240,    12, Centre},
    {Label, u"Label17",           u"פתח פנימי  :",     6972, 1092,  1500,  300, 11.25, Right,  Underlined | RightToLeft},
    {Field, u"Width2",            u"MyWidth_2",        6108, 1152,   804,  252,    12, Centre},
    {Field, u"Height2",           u"MYHeight_2",       5148, 1152,   804,  252,    12, Centre},
    {Label, u"Label31",           u" ארגז מונו בלוק :",  6972, 1404,  1500,  300, 11.25, Right,  Underlined | RightToLeft},
    {Field, u"Text31",            u"Argaz_Width",      6132, 1464,   804,  240,    12, Centre},
    {Field, u"Text32",            u"Argaz_Height",     5172, 1464,   804,  240,    12, Centre},
    // The controls of the table of the parts, which is at the left of the block that the report
    // prints for an order line. The row of the mesh is above the row of the glass.
    {Label, u"Label8",            u"רוחב",             3527,   50,   585,  300,    12, Right,  Bold | Underlined | RightToLeft},
    {Label, u"Label9",            u"גובה",             2961,   50,   555,  300,    12, Right,  Bold | Underlined},
    {Label, u"Label10",           u"כמות",             2394,   50,   570,  300,    12, Centre, Bold | Underlined | RightToLeft},
    {Label, u"Label11",           u"סוג",              1300,   50,   585,  300,    12, Right,  Bold | Underlined | RightToLeft},
    {Label, u"Label12",           u"צבע",               200,   50,   570,  300,    12, Right,  Bold | Underlined | RightToLeft},
    {Label, u"Label13",           u"משקוף",            4296,  360,   696,  300,    12, Left,   Bold | Underlined},
    {Field, u"Text4",             u"Mashkof_W",        3588,  420,   600,  300,    12, Right,  Boxed},
    {Field, u"Text5",             u"Mashkof_H",        3012,  420,   576,  300,    12, Right,  Boxed},
    {Field, u"Text6",             u"Mahkof_Count",     2388,  420,   600,  300,    12, Centre, Boxed},
    {Field, u"Text7",             u"Mashof_Kind",      1200,  420,  1200,  300,    12, Right,  Boxed},
    {Field, u"Text8",             u"Mahkof_Color",        0,  420,  1200,  300,    12, Right,  Boxed},
    {Label, u"Label14",           u"כנף",              4296,  636,   696,  300,    12, Left,   Bold | Underlined},
    {Field, u"Text9",             u"Kanaf_W",          3588,  684,   600,  300,    12, Right,  Boxed},
    {Field, u"Text10",            u"Kanaf_H",          3012,  684,   576,  300,    12, Right,  Boxed},
    {Field, u"Text11",            u"Kanaf_Count",      2388,  684,   600,  300,    12, Centre, Boxed},
    {Field, u"Text12",            u"Kanaf_Kind",       1200,  684,  1200,  300,    12, Right,  Boxed},
    {Field, u"Text13",            u"Kanaf_Color",         0,  684,  1200,  300,    12, Right,  Boxed},
    {Label, u"Label16",           u"רשת",              4296,  960,   696,  300,    12, Left,   Bold | Underlined},
    {Field, u"Text19",            u"Reshet_W",         3588,  984,   600,  300,    12, Right,  Boxed},
    {Field, u"Text20",            u"Reshet_H",         3012,  984,   576,  300,    12, Right,  Boxed},
    {Field, u"Text21",            u"Reshet_Count",     2388,  984,   600,  300,    12, Centre, Boxed},
    {Field, u"Text22",            u"Reshet_Kind",      1200,  984,  1200,  300,    12, Right,  Boxed},
    {Field, u"Text23",            u"Reshet_Color",        0,  984,  1200,  300,    12, Right,  Boxed},
    {Label, u"Label15",           u"זכוכית",           4296, 1260,   696,  300,    12, Left,   Bold | Underlined},
    {Field, u"Text14",            u"Glass_W",          3588, 1320,   600,  300,    12, Right,  Boxed},
    {Field, u"Text15",            u"Glass_H",          3012, 1320,   576,  300,    12, Right,  Boxed},
    {Field, u"Text16",            u"Glass_Count",      2388, 1320,   600,  300,    12, Centre, Boxed},
    {Field, u"Text17",            u"Glass_Kind",       1200, 1320,  1200,  300,    12, Right,  Boxed},
    {Field, u"Text18",            u"Glass_Color",         0, 1320,  1200,  300,    12, Right,  Boxed},
    // Controls at the bottom of an order line's block: the shutter measures.
    {Label, u"Label25",           u"עובי U",           7956, 1848,   696,  300,    12, Centre, Bold | Underlined | RightToLeft},
    {Field, u"Text25",            u"U_Thick",          7452, 1848,   504,  300,    12, Centre, RightToLeft},
    {Label, u"Label26",           u"חיתוך U",          6600, 1848,   900,  300,    12, Centre, Bold | Underlined | RightToLeft},
    {Field, u"Text26",            u"U_Cut",            6156, 1848,   492,  300,    12, Centre, RightToLeft},
    {Label, u"Label27",           u"וזה U",            5556, 1848,   564,  300,    12, Centre, Bold | Underlined | RightToLeft},
    {Field, u"Text27",            u"U_Vasa",           5088, 1836,   504,  300,    12, Centre, RightToLeft},
    {Label, u"Label29",           u"רוחב שלב",         3708, 1872,  1140,  300,    12, Centre, Bold | Underlined | RightToLeft},
    {Field, u"Text29",            u"Shalav_Width",     3216, 1872,   492,  300,    12, Centre, RightToLeft},
    {Label, u"Label30",           u"כמות שלב",         2016, 1872,  1140,  300,    12, Centre, Bold | Underlined | RightToLeft},
    {Field, u"Text30",            u"Shalav_Count",     1512, 1872,   504,  300,    12, Centre, RightToLeft},
    {Label, u"Label28",           u"עובי שלב",          408, 1872,  1140,  300,    12, Centre, Bold | Underlined | RightToLeft},
    {Field, u"Text28",            u"Shalav_Thick",       12, 1872,   504,  300,    12, Centre, RightToLeft},
};

constexpr ControlDesign pageFooter[] = {
    {Label, u"Label4",            u"דף מספר :",        5484,    0,  1128,  300, 14.25, Left,   RightToLeft},
    {Label, u"Label3",            u"%p",               4944,    0,   540,  300, 14.25, Right},
    {Label, u"Label37",           u"מתוך :",           4164,    0,   768,  300, 14.25, Left,   RightToLeft},
    {Label, u"Label36",           u"%P",               3624,    0,   540,  300, 14.25, Right},
};
// clang-format on

constexpr SectionDesign sections[] = {
    {u"Section4", Role::ReportHeader, 0, {}},  {u"Section2", Role::PageHeader, 4020, pageHeader},
    {u"Section1", Role::Detail, 2250, detail}, {u"Section3", Role::PageFooter, 450, pageFooter},
    {u"Section5", Role::ReportFooter, 0, {}},
};

} // namespace

constexpr ReportDesign orderReportDesign{
    .name = u"DataReport1",
    .caption = u" דו\"ח הזמנות",
    .fontFamily = u"David",
    .width = 10800,
    .leftMargin = 500,
    .rightMargin = 500,
    .topMargin = defaultVerticalMargin,
    .bottomMargin = defaultVerticalMargin,
    .sections = sections,
    .documentWord = u"הזמנה",
    .documentNumberLabel = u"LabelOrder_Num",
};

} // namespace output
