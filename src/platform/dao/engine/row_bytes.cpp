#include "platform/dao/engine/row_bytes.h"

namespace dao {

void RowWriter::addText(QStringView value)
{
    const std::size_t start = bytes_.size();
    constexpr std::size_t head = sizeof(qint32);
    bytes_.resize(start + head + static_cast<std::size_t>(encoder_.requiredSpace(value.size())));
    char* const text = bytes_.data() + start + head;
    const auto length = encoder_.appendToBuffer(text, value) - text;
    qToBigEndian(static_cast<qint32>(length), bytes_.data() + start);
    bytes_.resize(start + head + static_cast<std::size_t>(length));
}

std::optional<QByteArrayView> RowReader::next()
{
    const auto length = qFromBigEndian<qint32>(rest_.data());
    rest_ = rest_.sliced(sizeof(qint32));
    if (length < 0)
        return {};
    const QByteArrayView field = rest_.first(length);
    rest_ = rest_.sliced(length);
    return field;
}

qint64 momentOf(QByteArrayView field)
{
    const auto count = qFromBigEndian<qint64>(field.data());
    return count / microsecondsPerSecond - (count % microsecondsPerSecond < 0 ? 1 : 0);
}

} // namespace dao
