#include "platform/dao/database.h"

#include "platform/dao/engine/connection_pool.h"
#include "platform/dao/postgres/link.h"
#include "platform/dao/postgres/postgres_session.h"
#include "platform/dao/recordset_p.h"
#include "platform/dao/sqlite/sqlite_session.h"
#include "platform/dao/table_def_p.h"

namespace dao {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

Database::Database(std::unique_ptr<Driver> driver)
    : driver_(std::move(driver)), name_(driver_->name())
{
}

Database::~Database() = default;

const QString& Database::Name() const
{
    driver();
    return name_;
}

QString Database::place() const
{
    return driver().place();
}

Driver& Database::driver() const
{
    if (!driver_)
        throw RunTimeError(runtime::ObjectClosed);
    return *driver_;
}

std::shared_ptr<Recordset> Database::OpenRecordset(const QString& source, RecordsetType type)
{
    if (isQuery(source)) {
        const SelectQuery query = parseQuery(source);
        if (type == dbOpenTable)
            throw RunTimeError(runtime::OperationNotSupported);
        return openDynaset(shared_from_this(), expectTable(driver(), query.table), query);
    }
    if (type == dbOpenDynaset && source.contains(u' ') && !driver().table(source))
        throw RunTimeError(runtime::QuerySyntax);
    TableInfo table = expectTable(driver(), source);
    if (type == dbOpenTable)
        return openTable(shared_from_this(), std::move(table));
    return openDynaset(shared_from_this(), std::move(table), {});
}

TableDef Database::CreateTableDef(const QString& name)
{
    driver();
    auto state = std::make_shared<TableDefState>();
    state->name = name;
    state->database = weak_from_this();
    state->fields.emplace();
    state->indexes.emplace();
    return TableDef(std::move(state));
}

void Database::Close()
{
    driver();
    driver_.reset();
}

void Database::BeginTrans()
{
    driver().begin();
}

void Database::CommitTrans()
{
    driver().commit();
}

void Database::Rollback()
{
    driver().rollback();
}

void Database::CopyTo(const QString& path)
{
    driver().copyTo(path);
}

namespace {

std::unique_ptr<Driver> openEmbedded(const QString& path, const Waits& waits)
{
    try {
        return SqliteDriver::open(path, waits.lock);
    } catch (const RunTimeError& error) {
        if (error.number() == runtime::UnrecognizedFormat && beginsAsLink(path))
            throw RunTimeError(runtime::UnrecognizedFormat,
                               u"The store link '%1' is damaged: it is too long."_s.arg(path));
        throw;
    }
}

} // namespace

std::shared_ptr<Database> Workspace::OpenDatabase(const QString& path) const
{
    if (const std::optional<Link> link = linkAt(path))
        return std::make_shared<Database>(PostgresDriver::open(path, *link, waits_));
    return std::make_shared<Database>(openEmbedded(path, waits_));
}

std::shared_ptr<Database> Workspace::CreateDatabase(const QString& path) const
{
    return std::make_shared<Database>(SqliteDriver::create(path, waits_.lock));
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

std::shared_ptr<Database> DBEngine::OpenDatabase(const QString& path)
{
    return workspace_.OpenDatabase(path);
}

void DBEngine::Idle()
{
    ConnectionPool::instance().clear();
}

} // namespace dao
