#pragma once

#include <QString>
#include <QStringList>

namespace testsupport {

/// A statement as the tests write it, for the embedded engine, in a server's words: names in the
/// spelling that the database has them in, the types of a new table's columns, a few functions.
/// `names` are those of the tables and columns that there are, `tables` those of the tables alone.
/// Empty for a statement that has no meaning there (PRAGMA).
QString serverSql(const QString& sql, const QStringList& names, const QStringList& tables);

} // namespace testsupport
