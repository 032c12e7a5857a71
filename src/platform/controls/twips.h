#pragma once

#include "platform/runtime/twips.h"

#include <QRect>

namespace controls {

/// Converts twips to device-independent pixels, rounded half up.
constexpr int pixels(int twips)
{
    using runtime::twipsPerPixel;
    return (twips + twipsPerPixel / 2) / twipsPerPixel;
}

/// Converts a rectangle from twips to pixels. Its position is measured from the left edge and is
/// never mirrored.
constexpr QRect twipsRect(int left, int top, int width, int height)
{
    return {pixels(left), pixels(top), pixels(width), pixels(height)};
}

} // namespace controls
