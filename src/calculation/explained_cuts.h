#pragma once

#include "calculation/cuts.h"

#include <QString>

namespace cuts {

/// A line with what its cut sizes were computed from, as far as a stored line tells it.
struct ComputedLine
{
    Size opening;
    bool isMonoblock = false;
    Size reduced;             ///< The opening that a monoblock leaves for the window.
    double doorThickness = 0; ///< Thickness of a door's frame.
    std::array<Size, PartCount> parts;
};

/// A series as it is in the catalogue today.
struct TodaysSeries
{
    Series series;
    bool isDoor = false;
};

/// Return how a part's cut size follows from the opening and the series, for example
/// "(120 − 2.8) ÷ 2 = 58.6". If the line's own size is another one, a Hebrew sentence says that the
/// series has changed since. The text is empty for a size that no line of this kind has, and for
/// one that a stored line does not tell how to compute: the frame of a monoblock door. Do not
/// throw.
QString explainedWidth(const ComputedLine& line, Part part, const TodaysSeries& series);
QString explainedHeight(const ComputedLine& line, Part part, const TodaysSeries& series);

/// Returns how a size of the shutter follows from the opening, for example "100 − 14 = 86". The
/// text is empty if the actual size is another one. Does not throw.
QString explainedDifference(double whole, double deduction, double actual);

/// Returns how the number of slats follows from the opening's height and the thickness of a slat,
/// for example "(100 − 8) ÷ 4 = 23", or with "≈" if it is rounded. The text is empty if the actual
/// number is another one. Does not throw.
QString explainedSlats(const Size& opening, double thickness, int actual);

/// Returns a Hebrew sentence that says that the line's series has been deleted since.
QString explainedMissingSeries();

/// Returns true if all cut sizes of the line follow from the series.
bool followsFrom(const ComputedLine& line, const TodaysSeries& series);

} // namespace cuts
