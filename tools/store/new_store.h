#pragma once

#include "tools/store/scratch_folder.h"
#include "tools/store/unfinished_file.h"

#include <QString>

#include <memory>

namespace dao {
class Database;
}

namespace storetools {

/// Creates the eleven tables and their indexes in a database that has none of them, and gives the
/// store an identity. To be called within a transaction.
void createTables(dao::Database& database);
/// Creates those of the program's own tables that a database lacks. Stations of a server have no
/// right to create tables, so the tables must exist before they are needed.
void createOwnTables(dao::Database& database);

/// A new embedded store under construction. It is created in the folder for temporary files. When
/// it is complete, it is copied to the folder of its final path and put in place there. The
/// destructor deletes an unfinished store.
class NewStore
{
public:
    enum class Tables {
        All,  ///< All tables and indexes, without rows.
        None, ///< No tables; they will be copied from another store.
    };

    /// Creates a new store. Throws DatabaseExists (3204) if the path or a journal for it already
    /// exists, PermissionDenied (3051) if its folder is not writable, and any error of the SQL
    /// engine.
    explicit NewStore(const QString& path, Tables tables = Tables::All,
                      runtime::Readers readers = runtime::Readers::AsUsual);
    ~NewStore();
    NewStore(const NewStore&) = delete;
    NewStore& operator=(const NewStore&) = delete;

    /// Returns the database, which is open until save(). All changes are one transaction.
    dao::Database& database() const { return *database_; }
    /// Returns the temporary path of the store.
    QString unfinishedPath() const;
    /// Commits the transaction and closes the store.
    void save();
    /// Writes the store to its final path, durably. Throws DatabaseExists (3204) if the path has
    /// been created in the meantime, and DiskFull (3026) or DiskOrNetworkError (3043).
    void putInPlace();

private:
    UnfinishedFile target_;
    ScratchFolder folder_;
    std::shared_ptr<dao::Database> database_;
};

} // namespace storetools
