#pragma once

#include <QStringList>
#include <QVariant>

#include <limits>
#include <vector>

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

/// Identifies a row, whatever its fields hold. Opaque above the engine; equal keys mean the same
/// row of the same table.
using RowKey = QVariant;

/// Internal row number, ascending in insertion order, whatever the row's fields hold.
using RowNumber = qint64;
using RowNumbers = std::vector<RowNumber>;

/// The stored values of a row, one for each column asked for.
using StoredValues = std::vector<QVariant>;

/// The last number that a counter can give: the highest of a 32-bit field.
constexpr qint64 highestCounter = std::numeric_limits<qint32>::max();

/// What a table says of one of its fields.
struct FieldInfo
{
    QString name;
    DataType type = dbText;
    int size = 0; ///< Characters of a text field, 0 where it has no limit; 0 for other types.
    bool counter = false;
    bool required = false;
    bool countsByItself = false; ///< A counter that the store numbers without being asked.
};

/// A table or view of the store.
struct TableInfo
{
    QString name;
    bool updatable = true;
    std::vector<FieldInfo> fields;
    bool numbered = true; ///< False if the rows have no row numbers.

    /// -1 if no field has the name (any case).
    int ordinalOf(const QString& fieldName) const;
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
