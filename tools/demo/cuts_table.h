#pragma once

#include <QString>

namespace demo {

/// The stored lines of the order as a table, a line each, in the order of their numbers. Raises
/// what the store raises.
QString cutsTable(const QString& storePath, int order);

} // namespace demo
