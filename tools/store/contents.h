#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace storetools {

/// The initial rows of one table of a new store. An empty cell means Null.
struct TableContents
{
    QString table;
    QStringList fields;
    QList<QStringList> rows;
};

/// Reads the rows of a table from a tab-separated UTF-8 file in the folder. The first line of the
/// file contains the field names. Returns no rows if the folder has no file for the table. Throws
/// ItemNotFound (3265) for an unknown field name, DataTypeConversion (3421) for a row with a wrong
/// number of cells, and FileNotFound (53) for a file that cannot be read.
TableContents readContents(const QString& folder, const QString& table);

} // namespace storetools
