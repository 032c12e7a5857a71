#pragma once

#include <QString>
#include <QVariant>

namespace dao {

/// Field types under their DAO names and numbers.
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

/// What a row is told apart by, whatever its fields hold. Opaque above the engine; equal keys mean
/// the same row of the same table.
using RowKey = QVariant;

/// What a table says of one of its fields.
struct FieldInfo
{
    QString name;
    DataType type = dbText;
    int size = 0; ///< Characters of a text field, 0 where it has no limit; 0 for other types.
    bool counter = false;
    bool required = false;
};

/// What a table says of one of its indexes.
struct IndexInfo
{
    QString name;
    QStringList fields;
    bool primary = false;
    bool unique = false;
};

} // namespace dao
