#pragma once

#include <QString>
#include <QVariant>

namespace dao {

/// Field types with their DAO names and numbers.
enum DataType {
    dbBoolean = 1,
    dbInteger = 3,
    dbLong = 4,
    dbDouble = 7,
    dbDate = 8,
    dbText = 10,
};

enum RecordsetType {
    dbOpenTable = 1,
    dbOpenDynaset = 2,
};

/// Internal row id. It is opaque to callers of the engine; equal keys identify the same row of the
/// same table.
using RowKey = QVariant;

/// The definition of a field in a table.
struct FieldInfo
{
    QString name;
    DataType type = dbText;
    int size = 0; ///< Maximum length of a text field in characters; 0 for an unlimited text field
                  ///< and for other types.
    bool counter = false;
    bool required = false;
};

/// The definition of an index of a table.
struct IndexInfo
{
    QString name;
    QStringList fields;
    bool primary = false;
    bool unique = false;
};

} // namespace dao
