#pragma once

#include <QByteArrayView>
#include <QStringEncoder>
#include <QStringView>

#include <optional>
#include <string>

namespace dao {

/// A row as bytes that are the same for equal values on every engine, so that rows can be handed
/// over and compared without a value of Qt's for each field. The bytes are those of a server's
/// binary copy: the number of fields in 16 bits, then for each field its length in 32 bits (-1 for
/// Null) and its value, the highest byte first. Whole numbers have 16 or 32 bits, decimals 64,
/// texts are UTF-8, moments count microseconds from the year 2000 in 64 bits.
class RowWriter
{
public:
    /// Begins a row behind what the bytes hold.
    void begin(int fields);
    void addNull();
    void addInt16(qint16 value);
    void addInt32(qint32 value);
    /// A zero is written without a sign, for not every engine keeps it.
    void addDouble(double value);
    void addText(QStringView value);
    void addMoment(qint64 seconds);

    QByteArrayView bytes() const { return QByteArrayView(bytes_.data(), std::ssize(bytes_)); }
    void clear() { bytes_.clear(); }

private:
    std::string bytes_; ///< Grows by a few bytes at less cost than Qt's array does.
    QStringEncoder encoder_{QStringEncoder::Utf8, QStringEncoder::Flag::Stateless};
};

/// Goes over the fields of one row.
class RowReader
{
public:
    explicit RowReader(QByteArrayView row) : rest_(row.sliced(sizeof(qint16))) {}
    /// The next field's bytes; nothing for Null.
    std::optional<QByteArrayView> next();

private:
    QByteArrayView rest_;
};

qint16 int16Of(QByteArrayView field);
qint32 int32Of(QByteArrayView field);
double doubleOf(QByteArrayView field);
/// Whole seconds from the beginning of the year 2000.
qint64 momentOf(QByteArrayView field);

} // namespace dao
