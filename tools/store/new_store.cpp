#include "tools/store/new_store.h"

#include "platform/dao/database.h"
#include "platform/dao/table_copy.h"
#include "store/schema.h"
#include "tools/store/place.h"

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

/// Returns `path` unchanged if a store can be created there. Throws DatabaseExists (3204)
/// otherwise.
const QString& freePath(const QString& path)
{
    requireFree(path);
    return path;
}

} // namespace

void createTables(dao::Database& database)
{
    for (const store::TableSchema& table : store::schema())
        store::createTable(database, table);
    dao::makeStoreMark(database);
}

void createOwnTables(dao::Database& database)
{
    const QStringList found = dao::ownTables(database);
    for (const store::TableSchema& table : store::ownTables()) {
        if (!found.contains(table.name))
            store::createTable(database, table);
    }
}

NewStore::NewStore(const QString& path, Tables tables, runtime::Readers readers)
    : target_(freePath(path), readers)
{
    database_ = dao::DBEngine::instance().Workspaces(0).CreateDatabase(unfinishedPath());
    database_->BeginTrans();
    if (tables == Tables::All)
        createTables(*database_);
}

NewStore::~NewStore() = default;

QString NewStore::unfinishedPath() const
{
    return folder_.filePath(u"store.mdb"_s);
}

void NewStore::save()
{
    database_->CommitTrans();
    database_->Close();
}

void NewStore::putInPlace()
{
    target_.fill(unfinishedPath());
    target_.putInPlace(runtime::Existing::Refuse);
}

} // namespace storetools
