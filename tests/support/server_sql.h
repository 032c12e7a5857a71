#pragma once

#include <QString>
#include <QStringList>

namespace testsupport {

/// Translates a test's SQLite statement to PostgreSQL: the spelling of names, the column types of a
/// new table and a few functions. `names` contains the existing tables and columns, `tables` only
/// the tables. Returns an empty text for a statement that has no equivalent, such as PRAGMA.
QString serverSql(const QString& sql, const QStringList& names, const QStringList& tables);

} // namespace testsupport
