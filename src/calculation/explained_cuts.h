#pragma once

#include "calculation/cuts.h"

#include <QString>

namespace cuts {

enum class Side { Width, Height };

/// A line with what its figures were computed from, as far as a stored line tells it.
struct ComputedLine
{
    Size opening;
    bool isMonoblock = false;
    Size reduced;             ///< The opening that a monoblock leaves for the window.
    double doorThickness = 0; ///< Thickness of a door's frame.
    std::array<Size, PartCount> parts;
    std::array<double, PartCount> counts{}; ///< Pieces of each part.
    /// False for a line that is only computed. It differs from a stored line if it is a door: its
    /// reduced width is known, and its sashes are counted twice.
    bool isStored = true;
};

/// A series as it is in the catalogue today.
struct TodaysSeries
{
    Series series;
    bool isDoor = false;
};

/// Returns a Hebrew sentence that says that the width or height of the opening was entered. For a
/// door and for a monoblock, a second sentence shows the rest of the opening, for example
/// "90 − 2 × 4 = 82". Without a series there is no second sentence. Does not throw.
QString explainedOpening(const ComputedLine& line, Side side, const TodaysSeries* series);

/// Returns how a part's cut size follows from the opening and the series, for example
/// "(120 − 2.8) ÷ 2 = 58.6". If the line's own size is another one, or the series cannot be
/// computed, a Hebrew sentence says that the series has changed since; without a series, one says
/// that it has been deleted. The width that a monoblock takes off is not stored in a door line, so
/// it is computed from the width of the frame, and a sentence says so. For the glass and the mesh
/// of a door, a sentence says that it has none. Does not throw.
QString explainedSize(const ComputedLine& line, Part part, Side side, const TodaysSeries* series);

/// Returns how the number of a part's pieces follows from the series, for example "2 × 2 = 4" with
/// a Hebrew sentence that names the factors. Other numbers and a missing series are told as for a
/// size. The number of a frame's pieces is the same in all series; if the line has another one, a
/// sentence says so. Does not throw.
QString explainedCount(const ComputedLine& line, Part part, const TodaysSeries* series);

/// Returns how a size of the shutter follows from the opening, for example "100 − 14 = 86". The
/// text is empty if the actual size is another one. Does not throw.
QString explainedDifference(double whole, double deduction, double actual);

/// Returns how the number of slats follows from the opening's height and the thickness of a slat,
/// for example "(100 − 8) ÷ 4 = 23", or with "≈" if it is rounded. The text is empty if the actual
/// number is another one. Does not throw.
QString explainedSlats(const Size& opening, double thickness, int actual);

/// Returns true if all cut sizes of the line follow from the series.
bool followsFrom(const ComputedLine& line, const TodaysSeries& series);

} // namespace cuts
