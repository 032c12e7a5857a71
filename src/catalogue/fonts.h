#pragma once

#include "platform/controls/makers.h"

/// The fonts that both forms of the catalogue use.
namespace catalogue {

inline QFont commandFont()
{
    return controls::boldFontOf(QStringLiteral("Arial"), 11.25);
}

inline QFont headingFont()
{
    return controls::boldFontOf(QStringLiteral("David"), 20.25);
}

} // namespace catalogue
