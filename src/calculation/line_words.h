#pragma once

#include <QString>

namespace calculation {

/// Returns the constant text that a line without a monoblock stores as its window kind. A line with
/// a monoblock stores the type of the monoblock in the same field.
inline QString ordinaryKind()
{
    return QStringLiteral("אור");
}

/// Returns true if `kind` is the window kind of a monoblock line. An empty kind belongs to a line
/// without a monoblock.
inline bool isMonoblockKind(const QString& kind)
{
    return !kind.isEmpty() && kind != ordinaryKind();
}

/// The value of the field Sign that marks a series of doors.
inline constexpr QLatin1StringView doorSign("d2000");

} // namespace calculation
