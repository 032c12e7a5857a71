#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace dao {
class Database;
}

namespace storetools {

/// Makes the eleven tables with their indexes in a database that has none of them.
void createTables(dao::Database& database);

/// A store in the making. It lies in a folder of its own beside its place until it is put there
/// whole; one that is not goes with this object.
class NewStore
{
public:
    enum class Tables {
        All,  ///< With their indexes and no row.
        None, ///< To be copied from another store.
    };

    /// Raises 3204 where the path exists already, 3051 where its folder cannot be written, and what
    /// the engine raises.
    explicit NewStore(const QString& path, Tables tables = Tables::All);
    ~NewStore();
    NewStore(const NewStore&) = delete;
    NewStore& operator=(const NewStore&) = delete;

    /// Open until save(), everything that it does in one transaction.
    dao::Database& database() const { return *database_; }
    /// Where the store lies meanwhile.
    QString unfinishedPath() const;
    /// Commits what was written and closes the store.
    void save();
    /// Raises 3204 where the path has come into being meanwhile.
    void putInPlace() const;

private:
    QString path_;
    QTemporaryDir workshop_;
    std::shared_ptr<dao::Database> database_;
};

} // namespace storetools
