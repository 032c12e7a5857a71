#pragma once

#include "platform/runtime/twips.h"

#include <QStringView>

#include <span>

/// A report's design as data: tables of constants that can be laid beside the drawing of the form.
/// All positions and sizes are twips (1/1440 inch), from the left edge and the top of the section;
/// the left edge stays the left edge although the texts read from right to left.
namespace report {

enum class Kind {
    Label, ///< A caption, fixed by the design or set at run time.
    Field, ///< A column of the record source, by name in any case.
    Line,  ///< Horizontal or vertical: one of width and height is 0.
    Image, ///< A picture set at run time, empty before.
};

enum class Align { Left, Right, Centre };

/// Style flags of a control, added up.
enum Style {
    Plain = 0,
    Bold = 1,
    Underlined = 2,
    RightToLeft = 4, ///< Reading order; independent of the alignment.
    Boxed = 8,       ///< A thin solid border around the control.
};

struct ControlDesign
{
    Kind kind;
    QStringView name;
    QStringView text; ///< A label's caption, a field's column.
    int left;
    int top;
    int width;
    int height;
    double points = 0; ///< Font size.
    Align align = Align::Left;
    int style = Plain;
};

/// What a section is for. Only page header, detail and page footer carry controls here; the report
/// header and footer stand in the collection with height 0.
enum class Role { ReportHeader, PageHeader, Detail, PageFooter, ReportFooter };

struct SectionDesign
{
    QStringView name;
    Role role;
    int height;
    std::span<const ControlDesign> controls;
};

struct ReportDesign
{
    QStringView name;
    QStringView caption; ///< Of the preview window.
    QStringView fontFamily;
    int width; ///< Of the sections, without the margins.
    int leftMargin;
    int rightMargin;
    int topMargin;
    int bottomMargin;
    std::span<const SectionDesign> sections;
    /// An exported file is proposed under this word and the caption of the named label.
    QStringView documentWord;
    QStringView documentNumberLabel;
};

/// Top and bottom margin of a report whose design leaves them open.
inline constexpr int defaultVerticalMargin = runtime::twipsPerInch;

constexpr const SectionDesign* sectionOf(const ReportDesign& design, Role role)
{
    for (const SectionDesign& section : design.sections) {
        if (section.role == role)
            return &section;
    }
    return nullptr;
}

} // namespace report
