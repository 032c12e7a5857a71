#pragma once

#include "tools/store/words.h"

/// Message texts about an old file that several source files use.
namespace storetools {

inline constexpr Text tablesCannotBeRead{u"its list of tables cannot be read",
                                         u"אי אפשר לקרוא את רשימת הטבלאות שלו"};
inline constexpr Text descriptionCannotBeRead{u"the description of %1 cannot be read",
                                              u"אי אפשר לקרוא את התיאור של %1"};

} // namespace storetools
