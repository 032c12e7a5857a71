#pragma once

#include <QString>
#include <QVariant>

#include <vector>

namespace report {

/// The values of one row, indexed by column ordinal.
using Row = std::vector<QVariant>;

/// The rows that a report prints. All rows show the values of one moment. A long source may
/// initially hold only its first rows; readAll replaces them by all rows of one later moment.
class RowSource
{
public:
    RowSource() = default;
    virtual ~RowSource() = default;
    RowSource(const RowSource&) = delete;
    RowSource& operator=(const RowSource&) = delete;

    /// Returns the number of all rows. readAll may change it.
    virtual int rowCount() const = 0;
    /// Returns the number of leading rows that rows() returns without a call of readAll.
    virtual int rowsAtHand() const = 0;
    /// Reads all rows if some are not loaded. Returns true if the number of rows or a row that
    /// rows() has returned differs now. Throws any error of reading; the source is then unchanged.
    virtual bool readAll() = 0;
    /// Returns the ordinal of the column with this name, ignoring case, or -1 if there is none.
    virtual int ordinalOf(const QString& column) const = 0;
    /// Returns at most `count` rows, starting at row `first`, counted from 0. Throws any error of
    /// reading.
    virtual std::vector<Row> rows(int first, int count) = 0;
};

} // namespace report
