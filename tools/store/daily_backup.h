#pragma once

#include "tools/store/backup.h"

#include <QDate>

#include <optional>

namespace storetools {

/// The number of daily backups that are kept in a folder.
inline constexpr int keptDailyBackups = 30;

struct DailyOutcome
{
    /// The name of a backup in the folder that belongs to another store; empty if there is none.
    /// Such a backup prevents a new backup in this folder.
    QString otherStore;
    QString path;           ///< Today's backup; it exists unless `backup` has findings.
    bool wasThere = false;  ///< Today's backup existed and is good, so nothing was copied.
    QString setAside;       ///< New path of today's damaged backup; empty if there was none.
    BackupOutcome backup;   ///< What copying found; see backUpStore.
    QStringList removed;    ///< Names of the removed old backups.
    QStringList notRemoved; ///< Names of old backups that the system did not let remove.
};

/// Returns the file name of the backup of a day, such as "zomrel-2026-03-01.mdb".
QString dailyBackupName(const QDate& day);

/// Makes the backup of the day `today` in a folder, unless the folder already contains a good
/// backup of that day. Then removes old backups, so that the newest 30 (keptDailyBackups) remain. A
/// damaged backup of that day is renamed, and a new one is made. The new backup is checked twice:
/// before it is written to the folder, and afterwards at its final path.
///
/// Removes only files whose names have the form of dailyBackupName(). Removes nothing if no new
/// backup was made, and never removes the new backup. Throws PermissionDenied (3051) if the folder
/// does not exist, CorruptDatabase (3049) if the written copy is damaged, and the errors of
/// backUpStore().
DailyOutcome backUpDaily(const Place& place, const QString& folder, const QDate& today,
                         const RowsOfTable& progress);

struct NewestBackup
{
    QString path;
    QDate day;
    QStringList warnings; ///< The findings because of which a restore would refuse it.
};

struct DailyStatus
{
    std::optional<NewestBackup> newestGood;
    QStringList damaged; ///< Names of the newer backups, which are damaged.
    int count = 0;       ///< Number of backups, good or not.
};

/// Finds the newest good backup in a folder. A backup is good if its rows are complete. Throws
/// PermissionDenied (3051) if the folder does not exist.
DailyStatus dailyStatus(const QString& folder);

} // namespace storetools
