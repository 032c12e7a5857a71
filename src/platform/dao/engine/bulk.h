#pragma once

#include <QByteArrayView>

#include <optional>

namespace dao {

/// The rows of a table in the order in which they were stored, each once.
class RowStream
{
public:
    virtual ~RowStream() = default;
    /// The next row's bytes (see RowWriter), good until the next call; nothing after the last one.
    /// Raises 3421 and 6 for contents that the declared type does not take, 3163 for a text longer
    /// than its field, and what reading raises.
    virtual std::optional<QByteArrayView> next() = 0;
};

/// Takes the rows of a table that was made in the same transaction.
class RowSink
{
public:
    virtual ~RowSink() = default;
    /// Rows are stored in the order in which they are added. A failure may show later than at the
    /// row that it is about.
    virtual void add(QByteArrayView row) = 0;
    /// To be called once after the last row. Without it the rows' fate is open.
    virtual void finish() = 0;
};

} // namespace dao
