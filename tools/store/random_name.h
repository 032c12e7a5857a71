#pragma once

#include <QString>

#include <functional>

namespace storetools {

/// Calls the function with random names that have this beginning, until it returns true for one.
/// Throws PermissionDenied (3051) if it never does.
void createUnderRandomName(const QString& beginning,
                           const std::function<bool(const QString& name)>& create);

} // namespace storetools
