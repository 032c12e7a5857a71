#pragma once

#include <QFont>

namespace catalogue {

/// The font of the forms' commands.
inline QFont commandFont()
{
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(11.25);
    font.setBold(true);
    return font;
}

} // namespace catalogue
