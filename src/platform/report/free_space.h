#pragma once

#include "platform/report/design.h"

#include <functional>
#include <span>

namespace report {

/// Minimum distance, in twips, between a text and a border, a line or an adjacent caption.
inline constexpr double clearance = 40;

/// The part of a control's width that its text may occupy, in twips from the control's left edge.
struct Extent
{
    double left;
    double right;

    bool operator==(const Extent&) const = default;
};

/// Returns the greatest width of a text that stays in `free`, the part of its control where it
/// touches no border and no other control. `width` and `align` are the width and the alignment of
/// the control. If a centred text must leave space on one side, it leaves the same space on the
/// other side.
double usableWidth(const Extent& free, double width, Align align);

/// A function that returns the width of a caption's uncondensed text in twips.
using CaptionWidth = std::function<double(const ControlDesign& caption)>;

/// Returns the part of a control's width that its text may occupy without touching other controls
/// of the section. If the control has a border, its text keeps a distance from the border. The text
/// of a field also keeps a distance from captions, vertical lines and borders beside the field. If
/// less than half of the width would remain, these captions, lines and borders are ignored.
Extent freeExtent(const ControlDesign& control, std::span<const ControlDesign> section,
                  const CaptionWidth& captionWidth);

} // namespace report
