#pragma once

#include <QtGlobal>

#include <limits>

namespace storetools {

/// The lowest and the highest number that identifies an order or a series. The program reads these
/// numbers as 16-bit integers. The number 0 means that no order or series is chosen.
inline constexpr int lowestNumber = 1;
inline constexpr int highestNumber = std::numeric_limits<qint16>::max();

} // namespace storetools
