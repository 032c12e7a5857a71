#pragma once

#include <QString>

namespace demo {

/// Returns the stored lines of the order as a text table, one text line per order line, sorted by
/// line number. Throws any store error.
QString cutsTable(const QString& storePath, int order);

} // namespace demo
