#include "tools/store/old_store/row_digest.h"

#include <QDataStream>
#include <QIODevice>

namespace storetools {

void RowDigest::add(const std::vector<QVariant>& row)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << digest_;
    for (const QVariant& value : row)
        stream << value;
    digest_ = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
    ++rows_;
}

bool RowDigest::operator==(const RowDigest& other) const
{
    return rows_ == other.rows_ && digest_ == other.digest_;
}

} // namespace storetools
