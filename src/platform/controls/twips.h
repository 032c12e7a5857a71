#pragma once

#include <QRect>

namespace controls {

/// One device-independent pixel is 15 twips.
inline constexpr int twipsPerPixel = 15;

constexpr int pixels(int twips)
{
    return (twips + twipsPerPixel / 2) / twipsPerPixel;
}

/// Converts a rectangle from twips to pixels. The rectangle is measured from the left edge and is
/// never mirrored.
constexpr QRect twipsRect(int left, int top, int width, int height)
{
    return {pixels(left), pixels(top), pixels(width), pixels(height)};
}

} // namespace controls
