#pragma once

#include <QtGlobal>

#include <limits>

namespace storetools {

/// The range of the numbers of orders and series. The program reads these numbers as 16-bit
/// integers. The number 0 means that no order or series is chosen.
inline constexpr int lowestNumber = 1;
inline constexpr int highestNumber = std::numeric_limits<qint16>::max();

} // namespace storetools
