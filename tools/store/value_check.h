#pragma once

#include "tools/store/layout.h"

#include <QStringList>

namespace storetools {

/// What the values of a store's rows show.
struct ValueReport
{
    /// Values that the program cannot have written.
    QStringList findings;
    /// Values that the program itself may have written, but hardly on purpose. They do not make a
    /// store unsound.
    QStringList remarks;
};

/// Reads all orders, lines and series and compares their values with what the program writes.
ValueReport checkValues(dao::Database& database, const Layout& layout);

} // namespace storetools
