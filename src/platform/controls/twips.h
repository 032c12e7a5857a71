#pragma once

#include <QRect>

namespace controls {

/// 15 twips are one device-independent pixel.
inline constexpr int twipsPerPixel = 15;

constexpr int pixels(int twips)
{
    return (twips + twipsPerPixel / 2) / twipsPerPixel;
}

/// A rectangle in twips from the left edge, never mirrored, as the toolkit's pixels.
constexpr QRect twipsRect(int left, int top, int width, int height)
{
    return {pixels(left), pixels(top), pixels(width), pixels(height)};
}

} // namespace controls
