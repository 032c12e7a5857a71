#pragma once

#include "platform/dao/engine/types.h"

#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace dao {

class Database;

/// The key and the values of a row, and its fields whose stored values do not fit their declared
/// types.
struct ExaminedRow
{
    RowKey key;
    /// The values of the fields as Field::Value returns them. A value is an invalid QVariant if the
    /// stored value is Null or unreadable.
    std::vector<QVariant> values;
    /// The positions of the fields whose stored values cannot be converted to their declared types.
    std::vector<int> unreadable;
    /// The positions of the fields whose stored values can be read but have another type than the
    /// engine uses for the field.
    std::vector<int> mistyped;
};

/// The state of a table's counter.
struct ExaminedCounter
{
    qint64 highest = 0; ///< The highest number in the table.
    std::optional<qint64>
        mark; ///< The last assigned number; empty if no trigger or sequence exists.

    bool isLagging() const { return mark && *mark < highest; }
    bool isExhausted() const;
};

/// Reads the whole store and returns the defects that the database engine finds, one text for each
/// defect. Throws CorruptDatabase (3049) if the damage prevents the check.
QStringList engineFindings(Database& database);

/// Returns one line for each object in the store that the program does not create, such as a
/// trigger or a view, and for each trigger of the program that was changed. Does not check which
/// tables, fields and ordinary indexes the store has, because the table definitions describe them.
QStringList foreignObjects(Database& database);

/// Returns true if the store has the table for its identifying mark, but the table does not contain
/// exactly one complete mark. Returns false if there is no such table, because an older version of
/// the program made the store.
bool hasBrokenMark(Database& database);

/// Calls the visitor once for every row of a table, in insertion order. Rows are read in pages, and
/// no database cursor is open while the visitor runs. Throws TableNotFound (3078) for an unknown
/// table, and the errors of reading the store.
void examineRows(Database& database, const QString& table,
                 const std::function<void(const ExaminedRow&)>& visitor);

/// Returns the highest number in a counter field and the last assigned number. Throws the errors of
/// reading the store.
ExaminedCounter examineCounter(Database& database, const QString& table, const QString& field);

} // namespace dao
