#include "tools/store/builder.h"

#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"
#include "store/schema.h"
#include "tools/store/contents.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

RunTimeError alreadyThere(const QString& path)
{
    return RunTimeError(runtime::DatabaseExists, u"Database '%1' already exists."_s.arg(path));
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

void fillTable(dao::Database& database, const TableContents& contents)
{
    const auto recordset = database.OpenRecordset(contents.table, dao::dbOpenTable);
    for (const QStringList& row : contents.rows) {
        recordset->AddNew();
        for (qsizetype i = 0; i < row.size(); ++i) {
            if (!row[i].isEmpty())
                recordset->Fields(contents.fields[i]).SetValue(row[i]);
        }
        recordset->Update();
    }
}

void build(const QString& path, const QString& contents)
{
    const auto database = dao::DBEngine::instance().Workspaces(0).CreateDatabase(path);
    database->BeginTrans();
    for (const store::TableSchema& table : store::schema())
        createTable(*database, table);
    if (!contents.isEmpty()) {
        for (const store::TableSchema& table : store::schema())
            fillTable(*database, readContents(contents, table.name));
    }
    database->CommitTrans();
    database->Close();
}

} // namespace

QString deliveredContents()
{
    return u":/zomrel-store"_s;
}

void createStore(const QString& path, const QString& contents)
{
    const QFileInfo target(path);
    if (target.exists() || target.isSymLink())
        throw alreadyThere(path);
    const QTemporaryDir workshop(target.absolutePath() + u"/.zomrel-store-XXXXXX"_s);
    if (!workshop.isValid())
        throw RunTimeError(runtime::PermissionDenied, workshop.errorString());
    const QString unfinished = workshop.filePath(target.fileName());
    build(unfinished, contents);
    QFile finished(unfinished);
    if (finished.rename(target.absoluteFilePath()))
        return;
    if (target.exists())
        throw alreadyThere(path);
    throw RunTimeError(runtime::PermissionDenied, finished.errorString());
}

} // namespace storetools
