#pragma once

#include <QString>

namespace calculation {

/// Returns the window kind that every line stores except a monoblock, whose type it stores instead.
inline QString ordinaryKind()
{
    return QStringLiteral("אור");
}

/// Value of the field Sign of a door series.
inline constexpr QLatin1StringView doorSign("d2000");

} // namespace calculation
