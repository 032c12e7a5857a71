#pragma once

#include <QString>
#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

class Place;

/// Selects whether a check computes the figures of all order lines, such as the cut sizes, again
/// with checkFigures().
enum class Figures { Skipped, Computed };

struct CheckReport
{
    QStringList findings; ///< One line for each error; empty for a sound store.
    /// The findings that prevent a backup: errors that the SQL engine's own check reports, and
    /// errors in the store's tables, fields, indexes and rows. If there are none, the rows are
    /// complete. A backup is then made despite other findings, because the rows could be lost
    /// without it.
    QStringList preventCopying;
    /// Remarks, one line each, about unusual contents that the program itself can cause. A store
    /// with remarks is still sound.
    QStringList remarks;
    /// The advice to the user about the findings. If the text is empty, the advice is to restore a
    /// sound backup.
    QString nextStep = {};
    /// The number of findings about stored figures, such as cut sizes, that differ from the figures
    /// computed from the series.
    qsizetype figureFindings = 0;
};

/// Checks a store like checkStore(), and returns the remarks as well as the findings. With
/// Figures::Computed, the figures of the order lines, such as the cut sizes, are computed again
/// from their series. Each difference is a finding.
CheckReport checkReport(const Place& place, Figures figures);
/// Checks an open store, but does not compare stored figures, such as cut sizes, with computed
/// ones. An embedded store must be a copy that no station uses. Throws the errors of reading the
/// store.
CheckReport checkReport(dao::Database& database, bool isOnServer);

/// Checks a store and returns one line per finding; the list is empty for a sound and complete
/// store. Failing to open the store is a finding. The check never changes the store. A store on a
/// server is read in one snapshot.
///
/// The findings are: errors reported by the SQL engine; missing tables, fields and indexes; fields
/// with another type or size; fields of the table Cuts at another position; values that cannot be
/// read as their declared type; texts longer than their field; missing and duplicate keys; numbers
/// outside the program's range; lines whose order does not exist; counters that are missing, lower
/// than a number in their table, or exhausted; tables, fields, indexes, triggers and other objects
/// that the program does not create or creates differently; values that the program cannot have
/// written.
QStringList checkStore(const Place& place);
QStringList checkStore(const QString& path);

/// Returns the findings about the structure of an open store: those of the SQL engine, and those
/// about tables, fields and indexes.
QStringList checkMaking(dao::Database& database, bool isOnServer);
/// Returns the findings about the contents of an open store: those about rows and counters.
QStringList checkContents(dao::Database& database);

} // namespace storetools
