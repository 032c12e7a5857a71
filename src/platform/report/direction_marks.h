#pragma once

#include <QChar>

namespace report {

/// Invisible characters that give the text beside them a direction.
inline constexpr QChar leftToRightMark(0x200e);
inline constexpr QChar rightToLeftMark(0x200f);

} // namespace report
