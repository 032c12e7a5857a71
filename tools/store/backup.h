#pragma once

#include "tools/store/store_copy.h"

namespace storetools {

struct BackupOutcome
{
    QStringList findings; ///< What prevents copying; if there is anything, nothing was written.
    QStringList warnings; ///< The findings because of which a restore would refuse the backup.
};

/// Copies a consistent snapshot of the store to a new embedded store, while stations may keep
/// working. They wait only while the snapshot is copied to the folder for temporary files. The copy
/// gets its final name only after it has passed the check and is on the disk. Nobody can read it
/// who cannot read the store. Throws DatabaseExists (3204) if the target exists, and any error of
/// opening and copying.
BackupOutcome backUpStore(const Place& place, const QString& target, const RowsOfTable& progress);

/// Whether a restore accepts a backup whose rows are complete, but which has other findings.
enum class Oddities { Refused, Accepted };

struct RestoreOutcome
{
    QStringList findings; ///< Errors of the backup; if there are any, nothing was changed.
    QStringList notes;    ///< What the restored store could not keep of the replaced one.
    QString kept;         ///< Path or schema of the replaced store; empty if there was none.
};

/// Replaces a store by a copy of the backup. At every moment the place holds either the complete
/// old store or the complete new one. The old store is kept, even if it is damaged: next to the
/// file, or in another schema of the server's database. A symbolic link at the place stays, and the
/// file that it names is replaced. Owner, group and permissions are kept. The restored store gets a
/// new generation. Throws Locked (3260) while another station has locked the store, and any error
/// of opening and copying.
RestoreOutcome restoreStore(const Place& backup, const Place& place, Oddities oddities,
                            const RowsOfTable& progress);

} // namespace storetools
