#pragma once

#include <array>
#include <optional>

/// The cut-size arithmetic of one opening: pure functions over plain values, without widgets, store
/// or global state.
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
/// negative. A member is empty if the series stores a Null; that is an error only when a formula
/// uses the value.
struct Deduction
{
    std::optional<double> width;
    std::optional<double> height;
};

/// The parts of a window. The values index arrays that have one control for each part.
enum Part { Mashkof = 0, Kanaf = 1, Glass = 2, Reshet = 3, PartCount = 4 };
inline constexpr std::array allParts{Mashkof, Kanaf, Glass, Reshet};

/// Number of pieces of a frame, whatever the series.
inline constexpr int framePieces = 2;
/// Subtracted from the opening's height to get the lengths of a monoblock's two U-profiles.
inline constexpr double uCutAllowance = 14;
inline constexpr double uVasaAllowance = 17.6;
/// The part of the opening's height that no slat covers.
inline constexpr double shalavHeightAllowance = 8;
/// The width deduction of a slat for a U profile of 6.5 and of 5.3, in the measures' unit.
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

/// The shutter measures of a monoblock, except the number of slats.
struct Shutter
{
    Size reduced; ///< The opening that remains for the window itself.
    double uCut = 0;
    double uVasa = 0;
    double shalavWidth = 0;
    Size argaz;
};

/// Computes the shutter measures. The monoblock's deductions reduce only the opening of the window;
/// the U-profile is computed from the full height.
Shutter shutter(const Size& opening, const Monoblock& monoblock);

/// Returns the number of slats before rounding, computed from the full opening height. The result
/// is negative if the height is below 8. Throws DivisionByZero (11) if the slat thickness is 0, or
/// Overflow (6) if the height minus the allowance of 8 is 0 as well.
double shalavCount(const Size& opening, const Monoblock& monoblock);

/// Returns the inner opening of a door frame. The frame's thickness is subtracted on both sides and
/// at the top, but not at the bottom.
Size doorOpening(const Size& opening, double thickness);

/// Returns the cut width of one piece of the part. The frame takes the full width; the other parts
/// divide it by the number of sashes. Throws InvalidUseOfNull (94) if a needed value is Null,
/// DivisionByZero (11) for 0 sashes, or Overflow (6) if the width is 0 as well.
double cutWidth(const Series& series, Part part, const Size& base);

/// Returns the cut height of the part. It does not depend on the number of sashes. Throws
/// InvalidUseOfNull (94) if the deduction is Null.
double cutHeight(const Series& series, Part part, const Size& base);

} // namespace cuts
