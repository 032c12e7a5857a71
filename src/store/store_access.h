#pragma once

#include "platform/dao/connection.h"
#include "platform/dao/database.h"

#include <QString>

#include <memory>

namespace store {

/// The way to the store for every form: a new database on Module1::StorePath at each call, shared,
/// for reading and writing. Raises 3024, 3343, 3260 and the like as opening does.
std::shared_ptr<dao::Database> OpenMyDataBase();

/// Opens the report's own connection to the store file. Raises as opening a database does.
void OpenAdoConnection(ado::Connection& connection, const QString& path);

/// Whether the store holds a table of exactly this name, upper and lower case told apart. A
/// failure is reported by ReportAccessError and answers false.
bool TableExists(const QString& path, const QString& tableName);

/// Changes one field of a table: "APPEND" adds it where no field has exactly this name and leaves
/// an existing one as it is, whatever its type; "DELETE" takes it away; any other action does
/// nothing. A failure is reported by ReportAccessError and not passed on.
void AlterField(dao::TableDef& table, const QString& action, const QString& fieldName,
                dao::DataType fieldType, int fieldSize = 0);

/// Creates the table Orders where it is missing and adds to an older one what it lacks. Creates no
/// index. Raises what opening the store raises, and 3343 for a database that holds none of the
/// store's tables.
void BuildOrdersTable(const QString& path);

} // namespace store
