#pragma once

#include "calculation/cuts.h"

#include <QStringList>

#include <span>

namespace cuts {

/// The figures of one line that marksOf checks.
struct LineFigures
{
    Size opening;
    std::array<Size, PartCount> parts; ///< Cut sizes of one piece of each part.
    double sashes = 1;                 ///< Number of sashes, panes and meshes.
    bool isMonoblock = false;
    Size reduced; ///< The opening that a monoblock leaves for the window.
    /// The measures of a monoblock's U-profile, slats and shutter box.
    std::array<double, 6> shutter{};
};

/// Returns the width per sash and the full height of an opening. With these values, a wide opening
/// with many sashes can be compared with a narrow opening.
Size bayOf(const Size& opening, double sashes);

/// Returns the reasons why a line probably contains a typing mistake, as one Hebrew sentence for
/// each reason. Returns an empty list for an ordinary line. A line is marked if
/// - a size is 0 or negative,
/// - all sashes together are wider than the opening, or a sash is higher than the opening,
/// - the glass is larger than its sash,
/// - a part is very small compared with the opening,
/// - a door is wider than high,
/// - one side of the opening is more than ten times as long as the other side,
/// - the height of the opening, or its width per sash, is under 15 or at least 500,
/// - the height of the opening, or its width per sash, differs greatly from the median of the
///   neighbouring lines.
///
/// The limits allow everything that a workshop makes. For example, the sash of a pocket window may
/// be up to 4.5 cm wider than its opening. `neighbours` contains the width per sash and the height
/// of each neighbouring line (see bayOf). With fewer than two neighbours, no median is compared.
QStringList marksOf(const LineFigures& line, std::span<const Size> neighbours);

} // namespace cuts
