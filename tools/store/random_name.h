#pragma once

#include <QString>

#include <functional>

namespace storetools {

/// Calls `create` with random names that start with `beginning`, until `create` returns true for
/// one of them. Throws PermissionDenied (3051) if `create` returns false for 100 names.
void createUnderRandomName(const QString& beginning,
                           const std::function<bool(const QString& name)>& create);

} // namespace storetools
