#pragma once

#include <QtGlobal>

#include <limits>

namespace storetools {

/// Range of order and series numbers. The program reads them as 16-bit integers; 0 means that none
/// is chosen.
inline constexpr int lowestNumber = 1;
inline constexpr int highestNumber = std::numeric_limits<qint16>::max();

} // namespace storetools
