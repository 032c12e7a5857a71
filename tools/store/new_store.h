#pragma once

#include "tools/store/scratch_folder.h"
#include "tools/store/unfinished_file.h"

#include <QString>

#include <memory>

namespace dao {
class Database;
}

namespace storetools {

/// Creates the eleven tables of a store and their indexes in a database that has none of them, and
/// gives the store an identity. The caller must have opened a transaction.
void createTables(dao::Database& database);
/// Creates the program's own tables ("zomrel_...") that a database lacks. Stations of a server have
/// no right to create tables, so these tables must exist before a station needs them.
void createOwnTables(dao::Database& database);

/// A new embedded store under construction. The store is created in the folder for temporary files.
/// The complete store is copied to the folder of its final path and then gets its final name. The
/// destructor deletes an unfinished store.
class NewStore
{
public:
    enum class Tables {
        All,  ///< All tables and indexes, without rows.
        None, ///< No tables; they will be copied from another store.
    };

    /// Creates a new store in the folder for temporary files. Throws DatabaseExists (3204) if a
    /// file or a journal already exists at the final path, PermissionDenied (3051) if the folder of
    /// the final path is not writable, and any error of the SQL engine.
    explicit NewStore(const QString& path, Tables tables = Tables::All,
                      runtime::Readers readers = runtime::Readers::AsUsual);
    ~NewStore();
    NewStore(const NewStore&) = delete;
    NewStore& operator=(const NewStore&) = delete;

    /// Returns the database of the new store, which is open until save() is called. All changes to
    /// the database belong to one transaction.
    dao::Database& database() const { return *database_; }
    /// Returns the temporary path of the store.
    QString unfinishedPath() const;
    /// Commits the transaction and closes the store.
    void save();
    /// Writes the store durably to its final path. Throws DatabaseExists (3204) if the final path
    /// has been created in the meantime, and DiskFull (3026) or DiskOrNetworkError (3043) if
    /// writing fails.
    void putInPlace();

private:
    UnfinishedFile target_;
    ScratchFolder folder_;
    std::shared_ptr<dao::Database> database_;
};

} // namespace storetools
