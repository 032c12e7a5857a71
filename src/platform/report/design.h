#pragma once

#include "platform/runtime/twips.h"

#include <QStringView>

#include <span>

/// The design of a report, as constant tables. All positions and sizes are in twips (1/1440 inch),
/// measured from the left and top edges of the section. Positions are never mirrored, although the
/// texts read right-to-left.
namespace report {

enum class Kind {
    Label, ///< A caption, fixed by the design or set at run time.
    Field, ///< A column of the record source; its name ignores case.
    Line,  ///< A horizontal or vertical line: one of width and height is 0.
    Image, ///< A picture that is set at run time; blank until then.
};

enum class Align { Left, Right, Centre };

/// Style flags of a control. Several flags can be combined.
enum Style {
    Plain = 0,
    Bold = 1,
    Underlined = 2,
    RightToLeft = 4, ///< Reading direction, independent of the alignment.
    Boxed = 8,       ///< A thin solid border around the control.
};

struct ControlDesign
{
    Kind kind;
    QStringView name;
    QStringView text; ///< The caption of a label or the column of a field.
    int left;
    int top;
    int width;
    int height;
    double points = 0; ///< Font size in points.
    Align align = Align::Left;
    int style = Plain;
};

/// The role of a section. Only the page header, the detail and the page footer contain controls.
/// The report header and report footer have height 0.
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
    QStringView caption; ///< Title of the preview window.
    QStringView fontFamily;
    int width; ///< Width of the sections without the margins.
    int leftMargin;
    int rightMargin;
    int topMargin;
    int bottomMargin;
    std::span<const SectionDesign> sections;
    /// The first part of the default name of an exported file. The second part is the caption of
    /// the label documentNumberLabel.
    QStringView documentWord;
    QStringView documentNumberLabel;
};

/// The top and bottom margin of a report, in twips, if the design defines no margin.
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
