#pragma once

#include "calculation/cuts.h"

#include <QStringList>

#include <span>

namespace cuts {

/// The figures of one line as the marks need them.
struct LineFigures
{
    Size opening;
    std::array<Size, PartCount> parts; ///< Cut sizes of one piece of each part.
    double sashes = 1;                 ///< Number of sashes, panes and meshes.
    bool isMonoblock = false;
    Size reduced; ///< The opening that a monoblock leaves for the window.
    /// The other sizes of a monoblock: U profiles, slats and shutter box.
    std::array<double, 6> shutter{};
};

/// Returns the part of an opening that belongs to one sash. It compares wide openings of many
/// sashes with narrow ones.
Size bayOf(const Size& opening, double sashes);

/// Returns why a line is probably a slip, one Hebrew sentence for each reason, or an empty list for
/// a line without oddities. A line is marked if
/// - a size is 0 or negative,
/// - the sashes together are wider than the opening, or the sash is higher than it,
/// - the glass is larger than its sash,
/// - a part is left with a small part of the opening,
/// - a door is wider than high,
/// - an opening is more than ten times as wide as high, or the other way,
/// - its height, or its width per sash, is under 15 or at least 500,
/// - its height, or its width per sash, is far from the median of the neighbouring lines.
///
/// The limits leave room for everything that a workshop makes. A pocket window's sash, for example,
/// is up to 4.5 cm wider than its opening. The neighbours are bays of the other lines of the order;
/// with fewer than two, nothing is compared.
QStringList marksOf(const LineFigures& line, std::span<const Size> neighbours);

} // namespace cuts
