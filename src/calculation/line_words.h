#pragma once

#include <QString>

namespace calculation {

/// Returns the window kind that every line stores except a monoblock, whose type it stores instead.
inline QString ordinaryKind()
{
    return QStringLiteral("אור");
}

/// Returns true if a line of this window kind is a monoblock. A line without a kind is not one.
inline bool isMonoblockKind(const QString& kind)
{
    return !kind.isEmpty() && kind != ordinaryKind();
}

/// Value of the field Sign of a door series.
inline constexpr QLatin1StringView doorSign("d2000");

} // namespace calculation
