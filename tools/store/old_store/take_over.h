#pragma once

#include "tools/store/old_store/intake.h"

namespace storetools {

struct TakenTable
{
    QString name;
    qint64 rows = 0;
};

struct TakeOverOutcome
{
    QStringList notes;              ///< What was left out, filled in or cut.
    QStringList findings;           ///< What kept the store from being taken over; none was made.
    std::vector<TakenTable> tables; ///< What the new store holds, where there is one.
};

/// Makes a new store of an old-format one, which is opened for reading only. The new store gets its
/// name when it is complete, was read back and is sound.
///
/// Raises 3204 where the target exists, 3024 and 3343 where the old path is no such store, 3049
/// where it is damaged, and what writing raises.
TakeOverOutcome takeOverStore(const QString& oldPath, const QString& target,
                              const TakeOverOptions& options, const TakeOverProgress& progress);

} // namespace storetools
