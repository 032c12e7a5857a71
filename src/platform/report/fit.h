#pragma once

namespace report {

/// The narrowest and the smallest type that a text is set in before it is cut, in percent.
inline constexpr int narrowestStretch = 75;
inline constexpr int smallestSize = 60;

/// How a text is drawn so that it fits the width it has.
struct Fit
{
    int stretch = 100; ///< Percent of the natural width of the glyphs.
    int size = 100;    ///< Percent of the type size.
    bool isCut = false;

    /// How wide and how high the glyphs are drawn, as shares of their natural size.
    double horizontal() const { return stretch * size / 10000.0; }
    double vertical() const { return size / 100.0; }

    bool operator==(const Fit&) const = default;
};

/// Fits a text that is `natural` wide at its full size into the width `available`, both in the same
/// unit. The text is condensed first, then set smaller, in whole percents. A text that is still too
/// wide is cut: it keeps its full size, and what is left of it is condensed as far as possible.
Fit fitted(double natural, double available);

} // namespace report
