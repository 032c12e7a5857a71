#pragma once

#include "platform/report/document.h"

#include "platform/report/memory_rows.h"

namespace testsupport {

inline constexpr report::ControlDesign smallHeader[] = {
    {report::Kind::Image, u"Logo", u"", 0, 0, 2000, 300},
    {report::Kind::Label, u"Title", u"כותרת", 3000, 0, 2000, 300, 12, report::Align::Right,
     report::Bold | report::Underlined | report::RightToLeft},
    {report::Kind::Label, u"Number", u"", 0, 300, 1000, 300, 12, report::Align::Centre,
     report::Boxed},
};

inline constexpr report::ControlDesign smallDetail[] = {
    {report::Kind::Line, u"Rule", u"", 0, 0, 5000, 0},
    {report::Kind::Label, u"NameCaption", u"שם:", 4000, 60, 1000, 300, 12, report::Align::Right,
     report::RightToLeft},
    {report::Kind::Field, u"NameField", u"Name", 1000, 90, 3000, 300, 12, report::Align::Right,
     report::RightToLeft},
    {report::Kind::Field, u"SizeField", u"Size", 0, 500, 600, 300, 12, report::Align::Right,
     report::Boxed},
};

inline constexpr report::ControlDesign smallFooter[] = {
    {report::Kind::Label, u"Page", u"%p", 0, 0, 500, 300, 12, report::Align::Right},
    {report::Kind::Label, u"Pages", u"%P", 600, 0, 500, 300, 12, report::Align::Right},
    {report::Kind::Label, u"Day", u"%d", 1200, 0, 1500, 300, 12, report::Align::Left},
};

inline constexpr report::SectionDesign smallSections[] = {
    {u"Head", report::Role::PageHeader, 600, smallHeader},
    {u"Row", report::Role::Detail, 1000, smallDetail},
    {u"Foot", report::Role::PageFooter, 300, smallFooter},
};

/// A report with a few controls. A sheet of `smallPaper` holds three blocks of 1000 twips.
inline constexpr report::ReportDesign smallReport{
    .name = u"SmallReport",
    .caption = u"דו\"ח קטן",
    .fontFamily = u"David",
    .width = 5000,
    .leftMargin = 100,
    .rightMargin = 200,
    .topMargin = 1000,
    .bottomMargin = 500,
    .sections = smallSections,
    .documentWord = u"מסמך",
    .documentNumberLabel = u"Number",
};

inline constexpr report::Paper smallPaper{5300, 5400};

/// Returns rows whose Name is "שורה" followed by the row number from 1, and whose Size is half of
/// the number.
inline std::shared_ptr<MemoryRows> smallRows(int count)
{
    return std::make_shared<MemoryRows>(
        QStringList{QStringLiteral("Name"), QStringLiteral("Size")}, count, [](int row) {
            return MemoryRows::Row{QStringLiteral("שורה %1").arg(row + 1), (row + 1) / 2.0};
        });
}

inline std::unique_ptr<report::Document> smallDocument(std::shared_ptr<MemoryRows> rows)
{
    auto sections = report::makeSections(smallReport);
    sections[0].Controls(QStringLiteral("Number")).setCaption(QStringLiteral("17"));
    return std::make_unique<report::Document>(smallReport, std::move(sections), std::move(rows),
                                              smallPaper);
}

/// Returns the text of a control in a band of the page. Bands are counted from the page header,
/// which is 0.
inline QString textOf(const report::Page& page, std::size_t band, QStringView name)
{
    for (const report::PrintedControl& printed : page.bands.at(band).controls) {
        if (printed.control->design().name == name)
            return printed.text;
    }
    return QStringLiteral("no such control");
}

} // namespace testsupport
