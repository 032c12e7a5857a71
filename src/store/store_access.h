#pragma once

#include "platform/dao/connection.h"
#include "platform/dao/database.h"

#include <QString>

#include <memory>

namespace store {

/// Opens the store at Module1::StorePath, shared, for reading and writing. Every call returns a new
/// database object. All forms open the store through this function. Throws DatabaseFileNotFound
/// (3024), UnrecognizedFormat (3343), Locked (3260) and any other error of Workspace::OpenDatabase.
std::shared_ptr<dao::Database> OpenMyDataBase();

/// Opens `connection` to the store at this path. The printed report reads the store through it.
/// Throws the errors of opening a database, such as DatabaseFileNotFound (3024).
void OpenAdoConnection(ado::Connection& connection, const QString& path);

/// Returns true if the store at this path has a table with exactly this name (the comparison is
/// case-sensitive). If an error occurs, ReportAccessError shows it and the function returns false.
bool TableExists(const QString& path, const QString& tableName);

/// Adds a field to a table or deletes one. The action "APPEND" adds the field unless a field with
/// exactly this name exists; an existing field keeps its type. The action "DELETE" deletes the
/// field. Any other action does nothing. Errors are shown by ReportAccessError and not rethrown.
void AlterField(dao::TableDef& table, const QString& action, const QString& fieldName,
                dao::DataType fieldType, int fieldSize = 0);

/// Creates the table Orders, without an index, if the store lacks it. Then adds the fields that the
/// table Orders lacks. Throws any error of opening the store, and UnrecognizedFormat (3343) for a
/// database that has none of the store's tables.
void BuildOrdersTable(const QString& path);

} // namespace store
