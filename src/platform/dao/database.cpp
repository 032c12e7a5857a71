#include "platform/dao/database.h"

#include "platform/dao/engine/connection_pool.h"
#include "platform/dao/engines.h"
#include "platform/dao/recordset_p.h"
#include "platform/dao/table_def_p.h"

namespace dao {

using runtime::RunTimeError;

Database::Database(std::unique_ptr<Session> session)
    : SessionOwner(std::move(session)), tables_(std::make_shared<TableList>())
{
}

std::shared_ptr<Recordset> Database::OpenRecordset(const QString& source, RecordsetType type)
{
    if (isQuery(source)) {
        const SelectQuery query = parseQuery(source);
        if (type == dbOpenTable)
            throw RunTimeError(runtime::OperationNotSupported);
        return openDynaset({shared_from_this(), shared_from_this()},
                           expectUpdatable(session(), query.table), query);
    }
    if (type == dbOpenDynaset && source.contains(u' ') && !session().table(source))
        throw RunTimeError(runtime::QuerySyntax);
    TableInfo table = expectUpdatable(session(), source);
    if (type == dbOpenTable)
        return openTable({shared_from_this(), shared_from_this()}, std::move(table));
    return openDynaset({shared_from_this(), shared_from_this()}, std::move(table), {});
}

TableDefs Database::tableDefs()
{
    tables_->owner = weak_from_this();
    return TableDefs(tables_);
}

TableDef Database::CreateTableDef(const QString& name)
{
    session();
    auto state = std::make_shared<TableDefState>();
    state->name = name;
    state->owner = weak_from_this();
    state->fields.emplace();
    state->indexes.emplace();
    return TableDef(std::move(state));
}

void Database::Close()
{
    session();
    closeSession();
}

std::shared_ptr<Database> Workspace::OpenDatabase(const QString& path) const
{
    return std::make_shared<Database>(openStore(path, timeouts_));
}

std::shared_ptr<Database> Workspace::CreateDatabase(const QString& path) const
{
    return std::make_shared<Database>(createStore(path, timeouts_));
}

DBEngine& DBEngine::instance()
{
    static DBEngine engine;
    return engine;
}

Workspace& DBEngine::Workspaces(int number)
{
    if (number != 0)
        throw RunTimeError(runtime::ItemNotFound);
    return workspace_;
}

void DBEngine::Idle()
{
    ConnectionPool::instance().clear();
}

} // namespace dao
