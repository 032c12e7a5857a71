#pragma once

#include <QStringList>
#include <QVariant>

#include <chrono>
#include <limits>
#include <vector>

namespace dao {

/// Field types with their names and numbers in DAO.
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

/// A key that identifies a row of a table independently of the row's field values. Only the
/// database engine interprets the contents of a key. Two keys are equal if they identify the same
/// row of the same table.
using RowKey = QVariant;

/// The internal id of a row. Rows that are inserted later have higher ids.
using RowNumber = qint64;
using RowNumbers = std::vector<RowNumber>;

/// The stored values of a row, one for each selected column.
using StoredValues = std::vector<QVariant>;

/// The highest number that a counter field can assign, which is the maximum of a 32-bit field.
constexpr qint64 highestCounter = std::numeric_limits<qint32>::max();

/// The definition of a field.
struct FieldInfo
{
    QString name;
    DataType type = dbText;
    int size = 0; ///< Maximum length of a text in characters; 0 for no limit and for other types.
    bool counter = false;
    bool required = false;
    bool countsByItself = false; ///< True if a trigger or an identity of the store assigns numbers.
};

/// The definition of a table or view.
struct TableInfo
{
    QString name;
    bool updatable = true;
    std::vector<FieldInfo> fields;
    bool numbered = true; ///< False if the rows have no row ids.

    /// Returns the position of a field by its case-insensitive name, or -1 if there is none.
    int ordinalOf(const QString& fieldName) const;
};

/// The definition of an index.
struct IndexInfo
{
    QString name;
    QStringList fields;
    bool primary = false;
    bool unique = false;
};

/// Time limits for one statement: for a lock and for the server's answer.
struct Timeouts
{
    /// How long a statement waits for a lock of another station. After this time Locked (3260) is
    /// thrown.
    std::chrono::milliseconds lock = std::chrono::seconds(5);
    /// How long the program waits for a server's answer to one statement. After this time
    /// CallFailed (3146) is thrown. This time must be longer than `lock`, so that the server can
    /// report a lock first.
    std::chrono::milliseconds answer = std::chrono::seconds(7);

    bool operator==(const Timeouts&) const = default;
};

} // namespace dao
