#pragma once

#include <QCryptographicHash>
#include <QVariant>

#include <vector>

namespace storetools {

/// Tells whether two tables hold the same rows in the same order without keeping any of them.
class RowDigest
{
public:
    /// The row's values as fields have them.
    void add(const std::vector<QVariant>& row);
    qint64 rows() const { return rows_; }
    bool operator==(const RowDigest& other) const;

private:
    QByteArray digest_; ///< Of all rows up to the last one.
    qint64 rows_ = 0;
};

} // namespace storetools
