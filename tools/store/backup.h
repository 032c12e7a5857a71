#pragma once

#include <QString>
#include <QStringList>

namespace storetools {

/// Copies the store, as it stands at one moment, to a new file; stations may work meanwhile. The
/// copy gets its name once it is checked. Gives what is wrong with the copy, which is then not
/// kept. Raises 3204 where the target exists, and what opening and copying raise.
QStringList backUpStore(const QString& path, const QString& target);

struct RestoreOutcome
{
    QStringList findings; ///< What is wrong with the backup; nothing was changed then.
    QString kept;         ///< Where the replaced store lies; empty where there was none.
};

/// Puts a copy of the backup in the store's place. The path names the old store or the whole new
/// one at every moment, and the old one is kept beside it, a damaged one too. Raises 3260 while
/// another station holds the store locked, and what opening and copying raise.
RestoreOutcome restoreStore(const QString& backup, const QString& path);

} // namespace storetools
