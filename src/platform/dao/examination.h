#pragma once

#include "platform/dao/engine/types.h"

#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace dao {

class Database;

/// A row in which some stored values may not fit their declared types.
struct ExaminedRow
{
    RowKey key;
    /// The values like those of Field::Value; invalid for Null and for unreadable values.
    std::vector<QVariant> values;
    /// The positions of the fields whose stored values do not fit their declared types.
    std::vector<int> unreadable;
    /// The ordinals of fields whose contents can be read, but were stored with another type.
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

/// Reads the whole store and returns the defects that the engine finds in its file structure, one
/// text each. Throws CorruptDatabase (3049) if the damage prevents the check.
QStringList engineFindings(Database& database);

/// Returns one line for each object in the store that the program does not make, such as triggers
/// and views, and for each trigger of the program that was changed. Tables, fields and ordinary
/// indexes are left to the table definitions.
QStringList foreignObjects(Database& database);

/// Returns true if the store has the table of the mark, but not exactly one complete mark in it. A
/// store that an older version made has no such table.
bool hasBrokenMark(Database& database);

/// Calls the visitor once for every row of a table, in insertion order. Rows are read in pages, and
/// no cursor is open while the visitor runs. Throws TableNotFound (3078) for an unknown table, and
/// any error of reading.
void examineRows(Database& database, const QString& table,
                 const std::function<void(const ExaminedRow&)>& visitor);

/// Returns the state of a COUNTER field. Throws any error of reading.
ExaminedCounter examineCounter(Database& database, const QString& table, const QString& field);

} // namespace dao
