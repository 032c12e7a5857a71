#pragma once

#include "calculation/cuts.h"

#include <QString>

namespace cuts {

enum class Side { Width, Height };

/// The figures of a line and the values from which they were computed. There are no members for
/// values that an order line does not store, such as the width deduction of a monoblock.
struct ComputedLine
{
    Size opening;
    bool isMonoblock = false;
    Size reduced;             ///< The opening that a monoblock leaves for the window.
    double doorThickness = 0; ///< Thickness of a door's frame.
    std::array<Size, PartCount> parts;
    std::array<double, PartCount> counts{}; ///< Pieces of each part.
    /// False for a line that has been computed but not stored. Only the explanation of a door line
    /// depends on it. In an unstored door line, each sash counts as two pieces, and the width that
    /// a monoblock leaves is known. In a stored door line, each sash counts as one piece, and that
    /// width may be missing.
    bool isStored = true;
};

/// A profile series as it is now in the catalogue, perhaps changed in the meantime.
struct TodaysSeries
{
    Series series;
    bool isDoor = false;
};

/// Returns a Hebrew sentence that says that the width or height of the opening was entered. For a
/// door and for a monoblock, a second sentence shows how much of the width or height is left, for
/// example "90 − 2 × 4 = 82". If `series` is nullptr, there is no second sentence. Does not throw.
QString explainedOpening(const ComputedLine& line, Side side, const TodaysSeries* series);

/// Returns the computation of a part's cut size from the opening and the series, for example "(120
/// − 2.8) ÷ 2 = 58.6". If the line contains another size than the computed one, a Hebrew sentence
/// adds that the series has been changed.
///
/// The frame width of a door line with a monoblock is an exception. The line does not store by how
/// much the monoblock reduces the width. Therefore this deduction is computed backwards from the
/// frame width, and a sentence says so.
///
/// Returns only a Hebrew sentence in three cases:
/// - `series` is nullptr: the series has been deleted.
/// - The size cannot be computed: the series has been changed.
/// - The part is the glass or the mesh of a door and has the size 0: a door has neither.
///
/// If the other sizes of a door line with a monoblock do not follow from the series, the sentence
/// that the series has been changed is also returned for the width of the frame.
///
/// Does not throw.
QString explainedSize(const ComputedLine& line, Part part, Side side, const TodaysSeries* series);

/// Returns the computation of the number of a part's pieces from the series, for example "2 × 2 =
/// 4" with a Hebrew sentence that names the factors. If the line contains another number than the
/// computed one, a sentence adds that the series has been changed.
///
/// Returns only a Hebrew sentence in two cases:
/// - `series` is nullptr: the series has been deleted.
/// - The series does not contain the number of sashes: the series has been changed.
///
/// For the frame, `series` is not used, because the number of pieces is the same in all series. If
/// the line contains another number than this one, a sentence says so. Does not throw.
QString explainedCount(const ComputedLine& line, Part part, const TodaysSeries* series);

/// Returns the computation of a shutter size, for example "100 − 14 = 86". `whole` is the width or
/// height of the opening, and `actual` is the shutter size in the line. Returns an empty text if
/// `whole` minus `deduction` is not `actual`. Does not throw.
QString explainedDifference(double whole, double deduction, double actual);

/// Returns the computation of the number of slats from the opening's height and the slat thickness,
/// for example "(100 − 8) ÷ 4 = 23". The equals sign is replaced by "≈" if the number is rounded.
/// Returns an empty text if the computed number is not `actual`. Does not throw.
QString explainedSlats(const Size& opening, double thickness, int actual);

/// Returns true if the line contains the cut sizes that are computed from its opening with the
/// series.
bool followsFrom(const ComputedLine& line, const TodaysSeries& series);

} // namespace cuts
