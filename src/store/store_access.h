#pragma once

#include "platform/dao/connection.h"
#include "platform/dao/database.h"

#include <QString>

#include <memory>

namespace store {

/// Opens a new database on Module1::StorePath, shared, for reading and writing. Every form reaches
/// the store through this function. Throws DatabaseFileNotFound (3024), UnrecognizedFormat (3343),
/// Locked (3260) and any other error of Workspace::OpenDatabase.
std::shared_ptr<dao::Database> OpenMyDataBase();

/// Opens the report's own connection to the store file. Throws the errors of opening a database,
/// such as DatabaseFileNotFound (3024).
void OpenAdoConnection(ado::Connection& connection, const QString& path);

/// Returns true if the store has a table with exactly this name, compared with case. Errors are
/// shown by ReportAccessError, and the function then returns false.
bool TableExists(const QString& path, const QString& tableName);

/// Changes one field of a table. "APPEND" adds the field unless one with exactly this name exists;
/// an existing field keeps its type. "DELETE" removes the field. Any other action does nothing.
/// Errors are shown by ReportAccessError and not rethrown.
void AlterField(dao::TableDef& table, const QString& action, const QString& fieldName,
                dao::DataType fieldType, int fieldSize = 0);

/// Creates the table Orders if it is missing and adds missing fields to an existing one. Creates no
/// index. Throws any error of opening the store, and UnrecognizedFormat (3343) for a database that
/// has none of the store's tables.
void BuildOrdersTable(const QString& path);

} // namespace store
