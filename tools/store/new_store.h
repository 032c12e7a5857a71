#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace dao {
class Database;
}

namespace storetools {

/// Creates the eleven tables and their indexes in a database that has none of them.
void createTables(dao::Database& database);

/// A new embedded store under construction. It is created in a temporary folder beside its final
/// path and moved there when complete. The destructor deletes an unfinished store.
class NewStore
{
public:
    enum class Tables {
        All,  ///< All tables and indexes, without rows.
        None, ///< No tables; they will be copied from another store.
    };

    /// Creates a new store in a temporary folder beside the path. Throws DatabaseExists (3204) if
    /// the path already exists, PermissionDenied (3051) if its folder is not writable, and any
    /// error of the SQL engine.
    explicit NewStore(const QString& path, Tables tables = Tables::All);
    ~NewStore();
    NewStore(const NewStore&) = delete;
    NewStore& operator=(const NewStore&) = delete;

    /// Returns the database, which is open until save(). All changes are one transaction.
    dao::Database& database() const { return *database_; }
    /// Returns the temporary path of the store.
    QString unfinishedPath() const;
    /// Commits the transaction and closes the store.
    void save();
    /// Moves the store to its final path. Throws DatabaseExists (3204) if the path has been created
    /// in the meantime.
    void putInPlace() const;

private:
    QString path_;
    QTemporaryDir workshop_;
    std::shared_ptr<dao::Database> database_;
};

} // namespace storetools
