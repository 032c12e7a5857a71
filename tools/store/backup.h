#pragma once

#include "tools/store/store_copy.h"

namespace storetools {

struct BackupOutcome
{
    QStringList findings; ///< What prevents copying; if there is anything, nothing was written.
    QStringList warnings; ///< The findings because of which a restore would refuse the backup.
};

/// Copies a consistent snapshot of the store to a new embedded store. Stations may keep working;
/// they wait only while the snapshot is copied to the folder for temporary files. The copy gets its
/// final name only after it has passed the check and is on the disk. Only a user who can read the
/// store can read the copy. Throws DatabaseExists (3204) if the target exists, and any error of
/// opening and copying.
BackupOutcome backUpStore(const Place& place, const QString& target, const RowsOfTable& progress);

/// Selects whether a restore accepts a backup in which a check has found errors, although all rows
/// of the backup are complete.
enum class Oddities { Refused, Accepted };

struct RestoreOutcome
{
    QStringList findings; ///< Errors of the backup; if there are any, nothing was changed.
    QStringList notes;    ///< What the restored store could not keep of the replaced one.
    QString kept;         ///< Path or schema of the replaced store; empty if there was none.
};

/// Replaces a store by a copy of a backup. At every moment the path or the database contains either
/// the complete old store or the complete new store. The old store is kept, even if it is damaged:
/// an embedded store beside the new file, a store on a server in another schema of the same
/// database. If the path is a symbolic link, the link remains and its target is replaced. The new
/// store gets the owner, group and permissions of the old one. It also gets a new generation text,
/// by which stations notice the restore. Throws Locked (3260) while another station has locked the
/// store, and any error of opening and copying.
RestoreOutcome restoreStore(const Place& backup, const Place& place, Oddities oddities,
                            const RowsOfTable& progress);

} // namespace storetools
