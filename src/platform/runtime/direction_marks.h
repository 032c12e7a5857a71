#pragma once

#include <QString>

namespace runtime {

/// Invisible characters that determine the reading direction of the text beside them.
inline constexpr QChar leftToRightMark(0x200e);
inline constexpr QChar rightToLeftMark(0x200f);
/// The text between leftToRightIsolate and popIsolate is read from left to right and keeps its
/// order inside a Hebrew text.
inline constexpr QChar leftToRightIsolate(0x2066);
inline constexpr QChar popIsolate(0x2069);

/// Returns the text, such as the name of a file, with marks that make it read from left to right
/// inside a Hebrew text.
inline QString leftToRight(const QString& text)
{
    return leftToRightIsolate + text + popIsolate;
}

} // namespace runtime
