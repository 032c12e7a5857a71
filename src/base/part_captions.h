#pragma once

#include <QString>

#include <array>

namespace base {

/// Returns the captions of a window's parts as all screens show them: frame, sash, glass, mesh.
inline const std::array<QString, 4>& partCaptions()
{
    static const std::array captions{QStringLiteral("משקוף :"), QStringLiteral("כנף :"),
                                     QStringLiteral("זכוכית :"), QStringLiteral("רשת :")};
    return captions;
}

} // namespace base
