#pragma once

#include <QFont>

namespace catalogue {

/// Returns the font of the command buttons on the catalogue's forms.
inline QFont commandFont()
{
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(11.25);
    font.setBold(true);
    return font;
}

} // namespace catalogue
