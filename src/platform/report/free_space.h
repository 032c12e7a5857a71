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

/// Returns the greatest width of a text that stays in the free part of a control with this width
/// and alignment. A centred text loses twice the space that is missing on one side.
double usableWidth(const Extent& free, double width, Align align);

/// Returns the natural width of a caption in twips.
using CaptionWidth = std::function<double(const ControlDesign& caption)>;

/// Returns the part of a control's width in which its text does not collide with other controls of
/// the section. The text of a boxed control keeps clear of its own borders. The text of a field
/// also keeps clear of captions, vertical lines and borders beside it. If less than half of the
/// width would remain, the neighbours are ignored.
Extent freeExtent(const ControlDesign& control, std::span<const ControlDesign> section,
                  const CaptionWidth& captionWidth);

} // namespace report
