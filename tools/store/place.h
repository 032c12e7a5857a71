#pragma once

#include "tools/store/scratch_folder.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace dao {
class Database;
}

namespace storetools {

/// Returns the path of the store that a command uses if the command line names no store.
QString defaultStore();

/// The location of a store on the command line: the path of an embedded store, the path of a link,
/// or the address of a server's database.
class Place
{
public:
    /// Parses a store's location from the command line. Throws UnrecognizedFormat (3343) for an
    /// invalid address, for a damaged link and for a link to a link.
    explicit Place(const QString& name);

    /// Returns where the store is. For an embedded store this is the path of its file, even if the
    /// command line names a link to the file. For a store on a server it is the link or the address
    /// as it was given.
    const QString& name() const { return name_; }
    bool isOnServer() const { return isOnServer_; }
    /// Opens the store. Throws the errors of dao::Workspace::OpenDatabase.
    std::shared_ptr<dao::Database> open() const;
    /// Returns one line for each station that is connected to the store; see
    /// dao::connectedStations.
    QStringList stations() const;

private:
    QString name_;
    bool isOnServer_ = false;
    /// A temporary folder with a link file that names the server's database. Set only if the store
    /// is given by the address of a server and not by a path.
    std::unique_ptr<ScratchFolder> folder_;
    QString path_;
};

/// Checks that a new embedded store can be created at this path. Throws DatabaseExists (3204) if a
/// file or a leftover journal exists there, because SQLite would roll a leftover journal back into
/// the new store.
void requireFree(const QString& path);

} // namespace storetools
