#pragma once

#include <QString>
#include <QVariant>

#include <vector>

namespace report {

/// The values of one row, by the ordinals of its columns.
using Row = std::vector<QVariant>;

/// The rows that a report prints. They show the values of one moment. A long source may hold only
/// its first rows at first; readAll replaces them by all rows of one later moment.
class RowSource
{
public:
    RowSource() = default;
    virtual ~RowSource() = default;
    RowSource(const RowSource&) = delete;
    RowSource& operator=(const RowSource&) = delete;

    /// Returns the number of all rows. readAll may change it.
    virtual int rowCount() const = 0;
    /// Returns how many rows, from the first one, can be given without calling readAll.
    virtual int rowsAtHand() const = 0;
    /// Reads all rows if some are not at hand. Returns true if a row that was given before has
    /// changed, or the number of rows. Throws the errors of the source; nothing has changed then.
    virtual bool readAll() = 0;
    /// Returns the ordinal of the column with this name, ignoring case, or -1 if there is none.
    virtual int ordinalOf(const QString& column) const = 0;
    /// Returns at most `count` rows, starting at the row `first`, counted from 0. Throws the errors
    /// of the source.
    virtual std::vector<Row> rows(int first, int count) = 0;
};

} // namespace report
