#pragma once

#include <QString>

namespace storetools {

/// Returns the folder with the initial contents of a store that are shipped with the program. The
/// folder is a resource of the library.
QString deliveredContents();

/// Creates a store with all tables and indexes and with the rows from the folder `contents`. The
/// folder contains at most one file per table, named after the table. An empty folder name creates
/// a store without rows. The store is built under a temporary name and renamed when it is complete,
/// so that the path never contains a partial store.
///
/// Throws DatabaseExists (3204) if the path exists, DataTypeConversion (3421) for contents that do
/// not fit their table, and any store error.
void createStore(const QString& path, const QString& contents = deliveredContents());

} // namespace storetools
