#pragma once

#include "tools/store/layout.h"

#include <QStringList>

namespace storetools {

/// The result of checking the values in the rows of a store.
struct ValueReport
{
    /// Values that the program cannot have written.
    QStringList findings;
    /// Values that the program itself can have written, but that the user hardly intended. A store
    /// with such values is still sound.
    QStringList remarks;
};

/// Reads all orders, order lines and series, and reports values that the program does not write.
ValueReport checkValues(dao::Database& database, const Layout& layout);

} // namespace storetools
