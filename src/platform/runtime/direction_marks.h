#pragma once

#include <QString>

namespace runtime {

/// Invisible characters that give the text beside them a direction.
inline constexpr QChar leftToRightMark(0x200e);
inline constexpr QChar rightToLeftMark(0x200f);
/// The text between these two is read from left to right and moves as one unit.
inline constexpr QChar leftToRightIsolate(0x2066);
inline constexpr QChar popIsolate(0x2069);

/// Returns a text that reads from left to right also within a Hebrew one, such as a file's name.
inline QString leftToRight(const QString& text)
{
    return leftToRightIsolate + text + popIsolate;
}

} // namespace runtime
