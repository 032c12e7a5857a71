#pragma once

#include <QString>
#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

class Place;

/// Whether a check computes the figures of all lines again; see checkFigures.
enum class Figures { Skipped, Computed };

struct CheckReport
{
    QStringList findings; ///< One line for each error; empty for a sound store.
    /// The findings that prevent a backup: all except those about counters, about objects that the
    /// program does not make, and about values that it cannot have written. Without them the rows
    /// of the store are complete, and without a backup they could be lost.
    QStringList preventCopying;
    /// One line for each oddity that the program itself can cause. Remarks never make a store
    /// unsound.
    QStringList remarks;
    /// What the user should do about the findings. If it is empty, the advice is to restore a sound
    /// backup.
    QString nextStep = {};
    /// How many of the findings are figures that do not follow from their series.
    qsizetype figureFindings = 0;
};

/// Checks a store like checkStore and returns the remarks, too. With Figures::Computed, each figure
/// that does not follow from its series is a finding.
CheckReport checkReport(const Place& place, Figures figures);
/// Checks an open store without its figures. The store is either on a server or a copy that no
/// station uses. Throws the errors of reading it.
CheckReport checkReport(dao::Database& database, bool isOnServer);

/// Checks a store and returns one line per finding; the list is empty for a sound and complete
/// store. Failing to open the store is a finding. The check never changes the store. A store on a
/// server is read in one snapshot.
///
/// The findings are: errors reported by the engine; missing tables, fields and indexes; fields with
/// another type or size; fields of the lines' table at another position; values that cannot be read
/// as their declared type; texts longer than their field; missing and duplicate keys; numbers
/// outside the program's range; lines whose order does not exist; counters that are missing, lower
/// than a number in their table, or exhausted; tables, fields, indexes, triggers and other objects
/// that the program does not make, or makes otherwise; values that the program cannot have written.
QStringList checkStore(const Place& place);
QStringList checkStore(const QString& path);

/// Returns the findings about the structure: the engine's findings and the tables.
QStringList checkMaking(dao::Database& database, bool isOnServer);
/// Returns the findings about the contents: rows and counters.
QStringList checkContents(dao::Database& database);

} // namespace storetools
