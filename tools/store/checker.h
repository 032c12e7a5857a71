#pragma once

#include <QString>
#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

class Place;

/// Checks a store and returns one line per finding; the list is empty for a sound and complete
/// store. Failing to open the store is a finding. The check never changes the store. A store on a
/// server is read in one snapshot.
///
/// The findings are: errors reported by the engine; missing tables, fields and indexes; fields with
/// another type or size; fields of the lines' table at another position; values that cannot be read
/// as their declared type; texts longer than their field; missing and duplicate keys; numbers
/// outside the program's range; lines whose order does not exist; counters that are missing, lower
/// than a number in their table, or exhausted.
QStringList checkStore(const Place& place);
QStringList checkStore(const QString& path);

/// Returns the findings that prevent a backup or restore: those of checkStore except for counters.
/// The rows of a store with a faulty counter are complete, and without a backup they could be lost.
QStringList checkForCopying(const QString& path);
/// Returns the findings that prevent copying an open store. The store is either on a server or a
/// copy that no station uses.
QStringList checkForCopying(dao::Database& database, bool isOnServer);

/// Returns the findings about the structure: the engine's findings and the tables.
QStringList checkMaking(dao::Database& database, bool isOnServer);
/// Returns the findings about the contents: rows and counters.
QStringList checkContents(dao::Database& database);

} // namespace storetools
