#pragma once

#include <QString>
#include <QVariant>

#include <vector>

namespace report {

/// The values of one row, indexed by column ordinal.
using Row = std::vector<QVariant>;

/// The rows that a report prints, all read at the same moment. A long source may initially contain
/// only its first rows. readAll then reads all rows at one later moment and replaces the first rows
/// by them.
class RowSource
{
public:
    RowSource() = default;
    virtual ~RowSource() = default;
    RowSource(const RowSource&) = delete;
    RowSource& operator=(const RowSource&) = delete;

    /// Returns the number of all rows. A call of readAll may change this number.
    virtual int rowCount() const = 0;
    /// Returns the number of loaded rows, counted from the first row. rows() returns these rows
    /// without a call of readAll.
    virtual int rowsAtHand() const = 0;
    /// Reads all rows if some rows are not loaded. Returns true if the number of rows has changed,
    /// or if a row that rows() returned before has changed. Throws any error of reading. After an
    /// error, the source is unchanged.
    virtual bool readAll() = 0;
    /// Returns the ordinal of the column with this name, ignoring case, or -1 if there is no such
    /// column.
    virtual int ordinalOf(const QString& column) const = 0;
    /// Returns at most `count` rows, starting at row `first`, counted from 0. Throws any error of
    /// reading.
    virtual std::vector<Row> rows(int first, int count) = 0;
};

} // namespace report
