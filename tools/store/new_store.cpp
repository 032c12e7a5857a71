#include "tools/store/new_store.h"

#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"
#include "store/schema.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

RunTimeError alreadyThere(const QString& path)
{
    return RunTimeError(runtime::DatabaseExists, u"Database '%1' already exists."_s.arg(path));
}

/// Returns the name pattern of the temporary hidden folder. Throws DatabaseExists (3204) if the
/// path already exists.
QString workshopBeside(const QString& path)
{
    const QFileInfo target(path);
    if (target.exists() || target.isSymLink())
        throw alreadyThere(path);
    return target.absolutePath() + u"/.zomrel-store-XXXXXX"_s;
}

void createTable(dao::Database& database, const store::TableSchema& schema)
{
    dao::TableDef table = database.CreateTableDef(schema.name);
    for (const dao::FieldInfo& field : schema.fields)
        table.Fields().Append(dao::FieldDef(field));
    for (const dao::IndexInfo& index : schema.indexes)
        table.indexes().Append(dao::Index(index));
    database.tableDefs().Append(table);
}

} // namespace

void createTables(dao::Database& database)
{
    for (const store::TableSchema& table : store::schema())
        createTable(database, table);
}

NewStore::NewStore(const QString& path, Tables tables)
    : path_(path), workshop_(workshopBeside(path))
{
    if (!workshop_.isValid())
        throw RunTimeError(runtime::PermissionDenied, workshop_.errorString());
    database_ = dao::DBEngine::instance().Workspaces(0).CreateDatabase(unfinishedPath());
    database_->BeginTrans();
    if (tables == Tables::All)
        createTables(*database_);
}

NewStore::~NewStore() = default;

QString NewStore::unfinishedPath() const
{
    return workshop_.filePath(QFileInfo(path_).fileName());
}

void NewStore::save()
{
    database_->CommitTrans();
    database_->Close();
}

void NewStore::putInPlace() const
{
    QFile finished(unfinishedPath());
    if (finished.rename(QFileInfo(path_).absoluteFilePath()))
        return;
    if (QFileInfo::exists(path_))
        throw alreadyThere(path_);
    throw RunTimeError(runtime::PermissionDenied, finished.errorString());
}

} // namespace storetools
