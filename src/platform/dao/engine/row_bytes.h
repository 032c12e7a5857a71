#pragma once

#include <QByteArrayView>
#include <QStringEncoder>
#include <QStringView>
#include <QtEndian>

#include <bit>
#include <optional>
#include <string>

namespace dao {

constexpr qint64 microsecondsPerSecond = 1000000;

/// Writes rows as bytes in the format of PostgreSQL's binary COPY. Equal rows have equal bytes on
/// every engine, so rows can be copied and compared without a QVariant for each field.
///
/// A row starts with the number of fields (16 bits). Each field has the length of its value in
/// bytes (32 bits, -1 for Null) and then the value. All numbers are big-endian. Whole numbers have
/// 16 or 32 bits, and decimals have 64 bits. Texts are UTF-8. A date with time is the number of
/// microseconds since the start of the year 2000, in 64 bits.
class RowWriter
{
public:
    /// Starts a new row. The rows that were written before are kept.
    void begin(int fields) { append(static_cast<qint16>(fields)); }
    void addNull() { append(qint32{-1}); }
    void addInt16(qint16 value) { addNumber(value); }
    void addInt32(qint32 value) { addNumber(value); }
    /// Writes a decimal. Negative zero is written as zero, because not every engine keeps the sign
    /// of zero.
    void addDouble(double value) { addNumber(std::bit_cast<quint64>(value == 0 ? 0.0 : value)); }
    void addText(QStringView value);
    void addMoment(qint64 seconds) { addNumber(seconds * microsecondsPerSecond); }

    QByteArrayView bytes() const { return QByteArrayView(bytes_.data(), std::ssize(bytes_)); }
    void clear() { bytes_.clear(); }

private:
    template <typename T>
    void append(T value)
    {
        const T ordered = qToBigEndian(value);
        bytes_.append(reinterpret_cast<const char*>(&ordered), sizeof(T));
    }

    template <typename T>
    void addNumber(T value)
    {
        append(static_cast<qint32>(sizeof(T)));
        append(value);
    }

    std::string bytes_; ///< Small appends are faster than with QByteArray.
    QStringEncoder encoder_{QStringEncoder::Utf8, QStringEncoder::Flag::Stateless};
};

/// Reads the fields of one row in their order.
class RowReader
{
public:
    explicit RowReader(QByteArrayView row) : rest_(row.sliced(sizeof(qint16))) {}
    /// Returns the bytes of the next field, or nothing for Null.
    std::optional<QByteArrayView> next();

private:
    QByteArrayView rest_;
};

inline qint16 int16Of(QByteArrayView field)
{
    return qFromBigEndian<qint16>(field.data());
}
inline qint32 int32Of(QByteArrayView field)
{
    return qFromBigEndian<qint32>(field.data());
}
inline double doubleOf(QByteArrayView field)
{
    return std::bit_cast<double>(qFromBigEndian<quint64>(field.data()));
}
/// Returns the date and time in a field, in whole seconds since the start of the year 2000.
qint64 momentOf(QByteArrayView field);

} // namespace dao
