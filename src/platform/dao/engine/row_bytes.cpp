#include "platform/dao/engine/row_bytes.h"

#include <QtEndian>

#include <bit>

namespace dao {

namespace {

constexpr qint64 microseconds = 1000000;

template <typename T>
void append(std::string& bytes, T value)
{
    const T ordered = qToBigEndian(value);
    bytes.append(reinterpret_cast<const char*>(&ordered), sizeof(T));
}

template <typename T>
void appendField(std::string& bytes, T value)
{
    append(bytes, static_cast<qint32>(sizeof(T)));
    append(bytes, value);
}

} // namespace

void RowWriter::begin(int fields)
{
    append(bytes_, static_cast<qint16>(fields));
}

void RowWriter::addNull()
{
    append(bytes_, qint32{-1});
}

void RowWriter::addInt16(qint16 value)
{
    appendField(bytes_, value);
}

void RowWriter::addInt32(qint32 value)
{
    appendField(bytes_, value);
}

void RowWriter::addDouble(double value)
{
    appendField(bytes_, std::bit_cast<quint64>(value == 0 ? 0.0 : value));
}

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

void RowWriter::addMoment(qint64 seconds)
{
    appendField(bytes_, seconds * microseconds);
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

qint16 int16Of(QByteArrayView field)
{
    return qFromBigEndian<qint16>(field.data());
}

qint32 int32Of(QByteArrayView field)
{
    return qFromBigEndian<qint32>(field.data());
}

double doubleOf(QByteArrayView field)
{
    return std::bit_cast<double>(qFromBigEndian<quint64>(field.data()));
}

qint64 momentOf(QByteArrayView field)
{
    const auto count = qFromBigEndian<qint64>(field.data());
    return count / microseconds - (count % microseconds < 0 ? 1 : 0);
}

} // namespace dao
