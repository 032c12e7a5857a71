#pragma once

#include <QCryptographicHash>
#include <QVariant>

#include <vector>

namespace storetools {

/// A running digest of the rows of a table. Two tables with equal digests have the same rows in the
/// same order. The rows are not kept in memory.
class RowDigest
{
public:
    /// Adds a row to the digest. The values must have the types of the table's fields.
    void add(const std::vector<QVariant>& row);
    qint64 rows() const { return rows_; }
    bool operator==(const RowDigest& other) const;

private:
    QByteArray digest_; ///< The digest of all rows added so far.
    qint64 rows_ = 0;
};

} // namespace storetools
