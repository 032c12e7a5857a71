#pragma once

/// The unit of positions and sizes on screens and paper is the twip.
namespace runtime {

inline constexpr int twipsPerInch = 1440;
inline constexpr int twipsPerPoint = 20;
/// The number of twips in one device-independent pixel.
inline constexpr int twipsPerPixel = 15;

} // namespace runtime
