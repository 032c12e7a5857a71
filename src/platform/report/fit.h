#pragma once

namespace report {

/// The lowest percentage to which a text may be condensed horizontally, and the lowest percentage
/// to which its size may be reduced. A text that needs a lower percentage is truncated.
inline constexpr int narrowestStretch = 75;
inline constexpr int smallestSize = 60;

/// The horizontal condensing and the size reduction that make a text fit a given width.
struct Fit
{
    int stretch = 100; ///< Percent of the glyphs' natural width.
    int size = 100;    ///< Percent of the font size.
    bool isCut = false;

    /// horizontal() and vertical() return the scale factors of the glyphs in the two directions.
    double horizontal() const { return stretch * size / 10000.0; }
    double vertical() const { return size / 100.0; }

    bool operator==(const Fit&) const = default;
};

/// Computes how a text can be made to fit into the width `available`. `natural` is the width of the
/// text at full size, in the same unit. The text is first made narrower (condensed) and then
/// reduced in size, in whole percents. If that is not enough, it must be truncated. A truncated
/// text keeps its full size and is condensed as far as allowed.
Fit fitted(double natural, double available);

} // namespace report
