#pragma once

#include <array>
#include <optional>

/// Functions that compute the cut sizes of one opening. They are pure functions of plain values and
/// use no widgets, no store and no global state.
///
/// All measures are doubles in the measures' unit (see docs/glossary.md). Nothing is rounded. Each
/// expression is evaluated in the written order, so that results are reproducible to the last bit.
/// Every function throws Overflow (6) if a result is not a finite double.
namespace cuts {

struct Size
{
    double width = 0;
    double height = 0;
};

/// The values that a series adds to an opening's width and height for one part. A true deduction is
/// negative. A member is empty if the series stores a Null. An empty member is an error only when a
/// formula uses it.
struct Deduction
{
    std::optional<double> width;
    std::optional<double> height;
};

/// The parts of a window. A part's value is its index in arrays that have one control for each
/// part.
enum Part { Mashkof = 0, Kanaf = 1, Glass = 2, Reshet = 3, PartCount = 4 };
inline constexpr std::array allParts{Mashkof, Kanaf, Glass, Reshet};

/// Number of pieces of a frame. The number is the same for all series.
inline constexpr int framePieces = 2;
/// A monoblock's U-profile is cut to two lengths: the opening's height minus uCutAllowance, and the
/// opening's height minus uVasaAllowance.
inline constexpr double uCutAllowance = 14;
inline constexpr double uVasaAllowance = 17.6;
/// The part of the opening's height that the slats do not cover, in the measures' unit.
inline constexpr double shalavHeightAllowance = 8;
/// The deduction from a slat's width. It depends on the thickness of the U-profile: the first value
/// is for 6.5, the second value for 5.3. All four numbers are in the measures' unit.
inline constexpr std::array shalavWidthDeducts{12.7, 10.3};

struct Series
{
    std::array<Deduction, PartCount> deductions;
    std::optional<double> kanafNum; ///< Number of sashes.
};

struct Monoblock
{
    double widthDeduct = 0;
    double heightDeduct = 0;
    double shalavWidthDeduct = 0;
    double shalavThick = 0;
};

/// The computed sizes of the roller shutter of a monoblock. The number of slats is not among them.
struct Shutter
{
    Size reduced; ///< The opening that remains for the window itself.
    double uCut = 0;
    double uVasa = 0;
    double shalavWidth = 0;
    Size argaz;
};

/// Computes the measures of the roller shutter of a monoblock. The U-profile is computed from the
/// full height of the opening, not from the height that is left for the window.
Shutter shutter(const Size& opening, const Monoblock& monoblock);

/// Returns the number of slats before rounding: (height − 8) / slat thickness, with the full height
/// of the opening. The result is negative if the height is below 8. If the slat thickness is 0,
/// throws Overflow (6) for a height of exactly 8, and DivisionByZero (11) for any other height.
double shalavCount(const Size& opening, const Monoblock& monoblock);

/// Returns the inner opening of a door frame. The frame's thickness is subtracted from the width on
/// both sides. It is subtracted from the height only at the top, not at the bottom.
Size doorOpening(const Size& opening, double thickness);

/// Returns the cut width of one piece of the part. For a frame, it is the opening's width plus the
/// deduction. For every other part, this sum is divided by the number of sashes. A division by 0
/// sashes throws Overflow (6) if the sum is 0, and DivisionByZero (11) otherwise. Throws
/// InvalidUseOfNull (94) if a needed value is Null.
double cutWidth(const Series& series, Part part, const Size& base);

/// Returns the cut height of the part. The cut height does not depend on the number of sashes.
/// Throws InvalidUseOfNull (94) if the deduction is Null.
double cutHeight(const Series& series, Part part, const Size& base);

} // namespace cuts
