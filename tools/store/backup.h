#pragma once

#include "tools/store/store_copy.h"

namespace storetools {

/// Copies the store, as it stands at one moment, to a new embedded store; stations may work
/// meanwhile. The copy gets its name once it is checked. Gives what is wrong with the copy, which
/// is then not kept. Raises 3204 where the target exists, and what opening and copying raise.
QStringList backUpStore(const Place& place, const QString& target, const RowsOfTable& progress);

struct RestoreOutcome
{
    QStringList findings; ///< What is wrong with the backup; nothing was changed then.
    QString kept;         ///< Where the replaced store lies; empty where there was none.
};

/// Puts a copy of the backup in the store's place. The place holds the old store or the whole new
/// one at every moment, and the old one is kept, a damaged one too: beside the file, or in a schema
/// of its own in the server's database. Raises 3260 while another station holds the store locked,
/// and what opening and copying raise.
RestoreOutcome restoreStore(const Place& backup, const Place& place, const RowsOfTable& progress);

} // namespace storetools
