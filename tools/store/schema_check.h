#pragma once

#include "tools/store/layout.h"

#include <QStringList>

namespace storetools {

/// Returns the differences between the tables, fields and indexes of a store and their description.
/// Additional tables and fields belong to the workshop and are no finding.
QStringList checkSchema(const Layout& layout);

} // namespace storetools
