#pragma once

#include "platform/report/design.h"

#include <functional>
#include <span>

namespace report {

/// What a text keeps from borders, lines and the captions beside it, in twips.
inline constexpr double clearance = 40;

/// The part of a control's width that its text may take, in twips from the control's left edge.
struct Extent
{
    double left;
    double right;

    bool operator==(const Extent&) const = default;
};

/// The greatest width of a text that is aligned as stated in a control of the width and stays in
/// the free part: a centred text loses on both sides what is taken from one.
double usableWidth(const Extent& free, double width, Align align);

/// The natural width of a caption in twips.
using CaptionWidth = std::function<double(const ControlDesign& caption)>;

/// Finds the free part of a control among the other controls of its section. A boxed control keeps
/// its text from its own borders. A field also keeps it from the captions on its line and from the
/// vertical lines and borders that run along it; neighbours that would leave it less than half of
/// its width are ignored.
Extent freeExtent(const ControlDesign& control, std::span<const ControlDesign> section,
                  const CaptionWidth& captionWidth);

} // namespace report
