#pragma once

#include "tools/store/layout.h"

#include <QStringList>

namespace storetools {

/// Where the tables, fields and indexes of a store differ from the described ones. Tables and
/// fields that the description does not know are the workshop's own and no finding.
QStringList checkSchema(const Layout& layout);

} // namespace storetools
