#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace dao {
class Database;
}

namespace storetools {

/// Where a store is or is to be, as the command line names it: an embedded store, a link to a
/// database on a server, or the database's address.
class Place
{
public:
    /// Raises 3343 for an address that is none and for a damaged link.
    explicit Place(const QString& name);

    /// As it was named.
    const QString& name() const { return name_; }
    bool isOnServer() const { return isOnServer_; }
    /// Raises what dao::Workspace::OpenDatabase does.
    std::shared_ptr<dao::Database> open() const;

private:
    QString name_;
    bool isOnServer_ = false;
    std::unique_ptr<QTemporaryDir> folder_; ///< Of the link that stands for an address.
    QString path_;
};

/// Raises 3204 where a new embedded store cannot get this name: something lies there, or what is
/// left of a half-made change, which would be undone in the new store.
void requireFree(const QString& path);

} // namespace storetools
