#pragma once

#include "platform/dao/engine/types.h"

#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace dao {

class Database;

/// A row as an examination finds it, whatever it holds.
struct ExaminedRow
{
    RowKey key;
    /// As Field::Value gives them; invalid for Null and for what cannot be read.
    std::vector<QVariant> values;
    /// The ordinals of the fields whose contents their declared type does not take.
    std::vector<int> unreadable;
};

/// How far a table's counter has come.
struct ExaminedCounter
{
    qint64 highest = 0;         ///< The highest number that stands in the table.
    std::optional<qint64> mark; ///< The last number given; empty where nothing keeps the counter.

    bool isLagging() const { return mark && *mark < highest; }
    bool isExhausted() const;
};

/// What the engine finds wrong with the store as it lies on the disk, a line for each; empty where
/// it finds nothing. Reads the whole store. Throws CorruptDatabase (3049) for damage that keeps it
/// from looking.
QStringList engineFindings(Database& database);

/// Hands every row of a table to the visitor once, in the order in which the rows were stored. Rows
/// are read in pages; no cursor is open while the visitor runs. Throws TableNotFound (3078) for an
/// unknown table and what reading throws.
void examineRows(Database& database, const QString& table,
                 const std::function<void(const ExaminedRow&)>& visitor);

/// Looks at a COUNTER field. Throws what reading throws.
ExaminedCounter examineCounter(Database& database, const QString& table, const QString& field);

} // namespace dao
