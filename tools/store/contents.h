#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace storetools {

/// The rows that a new store gets in one of its tables. An empty cell stands for Null.
struct TableContents
{
    QString table;
    QStringList fields;
    QList<QStringList> rows;
};

/// Reads the file of a table in the folder: UTF-8, a heading line with the fields' names, cells
/// separated by tabs. A folder without a file for the table gives no rows.
/// Raises 3265 for a heading that the table does not know, 3421 for a row with another number of
/// cells than the heading, and 53 for a file that cannot be read.
TableContents readContents(const QString& folder, const QString& table);

} // namespace storetools
