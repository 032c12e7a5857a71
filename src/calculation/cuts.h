#pragma once

#include <array>
#include <optional>

/// The arithmetic of an opening: pure functions over plain values, no widget, no store, nothing
/// global.
///
/// All measures are in the program's one unnamed unit. Nothing is rounded, and every expression is
/// evaluated in the order in which it reads, so that results hold to the last bit of a double. All
/// functions raise 6 where a result exceeds a double.
namespace cuts {

struct Size
{
    double width = 0;
    double height = 0;
};

/// What a series adds to an opening's width and height for one part; a true deduction is negative.
/// Empty where the series holds a Null, which fails only when a formula needs it.
struct Deduction
{
    std::optional<double> width;
    std::optional<double> height;
};

/// Index of a part, here and in every control array.
enum Part { Mashkof = 0, Kanaf = 1, Glass = 2, Reshet = 3, PartCount = 4 };

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

/// The shutter parts of a monoblock but for the number of its slats.
struct Shutter
{
    Size reduced; ///< What is left of the opening for the window itself.
    double uCut = 0;
    double uVasa = 0;
    double shalavWidth = 0;
    Size argaz;
};

/// Only the reduced size takes the deductions; the U profile follows the full opening.
Shutter shutter(const Size& opening, const Monoblock& monoblock);

/// Number of slats before rounding, from the full height; negative below a height of 8. Raises 11
/// for a slat thickness of 0, 6 where the height less its allowance is 0 too.
double shalavCount(const Size& opening, const Monoblock& monoblock);

/// What a door frame of the thickness leaves: it stands on both sides and above, not below.
Size doorOpening(const Size& opening, double thickness);

/// Cut width of one piece of the part. The frame's is the whole width; the others share it among
/// the sashes. Raises 94 where the formula meets a Null, 11 for no sashes, 6 where the width is 0
/// too.
double cutWidth(const Series& series, Part part, const Size& base);

/// Cut height of the part, never shared. Raises 94 for a Null.
double cutHeight(const Series& series, Part part, const Size& base);

} // namespace cuts
