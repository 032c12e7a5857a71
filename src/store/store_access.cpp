#include "store/store_access.h"

#include "base/module1.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/message_box.h"
#include "platform/runtime/run_time_error.h"
#include "store/access_error.h"
#include "store/schema.h"

using namespace Qt::StringLiterals;

namespace store {

namespace {

bool holdsTable(dao::Database& database, const QString& tableName)
{
    dao::TableDefs tables = database.tableDefs();
    const int count = tables.Count();
    for (int i = 0; i < count; ++i) {
        if (tables(i).Name() == tableName)
            return true;
    }
    return false;
}

/// Checks that the database is a store. Throws UnrecognizedFormat (3343) for a database of another
/// program. Without this check, the program would open such a database and add its table Orders.
void refuseForeignDatabase(dao::Database& database)
{
    dao::TableDefs tables = database.tableDefs();
    const int count = tables.Count();
    for (int i = 0; i < count; ++i) {
        if (tableSchema(tables(i).Name()) != nullptr)
            return;
    }
    throw runtime::RunTimeError(runtime::UnrecognizedFormat,
                                u"Unrecognized database format '%1'."_s.arg(database.place()));
}

/// Creates the table Orders. A new table needs at least one field, so the function adds a temporary
/// field and then deletes it. One transaction contains both steps, so that a power cut cannot leave
/// the temporary field in the table.
void createOrders(dao::Database& database)
{
    database.BeginTrans();
    dao::TableDef orders = database.CreateTableDef(u"Orders"_s);
    orders.Fields().Append(orders.CreateField(u"SAMPLE"_s, dao::dbText));
    database.tableDefs().Append(orders);
    orders.Fields().Delete(u"SAMPLE"_s);
    database.CommitTrans();
}

bool hasField(dao::TableDef& table, const QString& fieldName)
{
    dao::FieldDefs fields = table.Fields();
    const std::int16_t count = runtime::toInt16(double(fields.Count()));
    for (std::int16_t i = 0; i < count; ++i) {
        if (fields(i).Name() == fieldName)
            return true;
    }
    return false;
}

} // namespace

std::shared_ptr<dao::Database> OpenMyDataBase()
{
    return dao::DBEngine::instance().Workspaces(0).OpenDatabase(Module1::StorePath);
}

void OpenAdoConnection(ado::Connection& connection, const QString& path)
{
    connection.Open(u"Provider=Microsoft.Jet.OLEDB.3.51;Data Source="_s + path);
}

bool TableExists(const QString& path, const QString& tableName)
{
    try {
        const auto database = dao::DBEngine::instance().OpenDatabase(path);
        return holdsTable(*database, tableName);
    } catch (const runtime::RunTimeError& error) {
        ReportAccessError(error.number(), error.description());
    }
    return false;
}

void AlterField(dao::TableDef& table, const QString& action, const QString& fieldName,
                dao::DataType fieldType, int fieldSize)
{
    try {
        if (!table.Updatable()) {
            runtime::MsgBox(u"TableDef not Updatable! Unable to complete task."_s);
            return;
        }
        if (action == u"APPEND"_s) {
            if (!hasField(table, fieldName))
                table.Fields().Append(table.CreateField(fieldName, fieldType, fieldSize));
        } else if (action == u"DELETE"_s) {
            table.Fields().Delete(fieldName);
        }
    } catch (const runtime::RunTimeError& error) {
        ReportAccessError(error.number(), error.description());
    }
}

void BuildOrdersTable(const QString& path)
{
    const auto database = dao::DBEngine::instance().OpenDatabase(path);
    refuseForeignDatabase(*database);
    if (!TableExists(path, u"Orders"_s))
        createOrders(*database);
    dao::TableDef orders = database->tableDefs()(u"Orders"_s);
    for (const dao::FieldInfo& field : tableSchema(u"Orders"_s)->fields)
        AlterField(orders, u"APPEND"_s, field.name, field.type, field.size);
    database->Close();
}

} // namespace store
