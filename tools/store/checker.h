#pragma once

#include <QString>
#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

class Place;

/// What is wrong with a store, a line for each finding; empty for one that is sound and complete.
/// A store that cannot be opened is a finding. Changes nothing in the store. One on a server is
/// looked at as it stands at one moment.
///
/// Looked for: the engine's own findings; missing tables, fields and indexes; fields of another
/// type or size; lines' fields that do not stand at their ordinals; contents that cannot be read by
/// the declared type; texts longer than their field; missing and doubled keys; numbers that the
/// program cannot handle; lines whose order does not exist; counters that are missing, stand below
/// a number in their table or have no number left.
QStringList checkStore(const Place& place);
QStringList checkStore(const QString& path);

/// What keeps a store from being backed up or put back: the findings of checkStore without those of
/// the counters. The rows of such a store are complete, and without a backup they could be lost.
QStringList checkForCopying(const QString& path);
/// The same of an open store, which is one on a server or a copy that nobody else works on.
QStringList checkForCopying(dao::Database& database, bool isOnServer);

/// The part that is about how the store was made: the engine's findings and the tables.
QStringList checkMaking(dao::Database& database, bool isOnServer);
/// The part that is about what it holds: rows and counters.
QStringList checkContents(dao::Database& database);

} // namespace storetools
