#pragma once

namespace report {

/// Limits, in percent, of the horizontal condensing and of the size reduction of a text. A text
/// that needs more is truncated.
inline constexpr int narrowestStretch = 75;
inline constexpr int smallestSize = 60;

/// Horizontal condensing and size reduction that make a text fit a given width.
struct Fit
{
    int stretch = 100; ///< Percent of the glyphs' natural width.
    int size = 100;    ///< Percent of the font size.
    bool isCut = false;

    /// These functions return the horizontal and vertical scale factors of the glyphs.
    double horizontal() const { return stretch * size / 10000.0; }
    double vertical() const { return size / 100.0; }

    bool operator==(const Fit&) const = default;
};

/// Fits a text whose full-size width is `natural` into the width `available`; both have the same
/// unit. The text is first condensed and then reduced in size, in whole percents. If that is not
/// enough, the text is truncated: it keeps its full size and is condensed to the limit.
Fit fitted(double natural, double available);

} // namespace report
