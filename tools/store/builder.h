#pragma once

#include <QString>

namespace storetools {

/// The folder of the delivered contents, which the library carries inside it.
QString deliveredContents();

/// Makes a store with all its tables and indexes and with the rows of the contents folder: for each
/// table at most one file, named after it. It is built beside its place and moved there when it is
/// complete, so the path holds a whole store or what it held before. An empty folder name gives a
/// store without rows.
///
/// Raises 3204 where the path exists already, 3421 for contents that do not fit their table, and
/// what the engine raises.
void createStore(const QString& path, const QString& contents = deliveredContents());

} // namespace storetools
