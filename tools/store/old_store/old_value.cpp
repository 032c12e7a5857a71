#include "tools/store/old_store/old_value.h"

#include "tools/store/told_error.h"
#include "tools/store/words.h"

#include <QDateTime>
#include <QtEndian>

#include <charconv>
#include <cmath>
#include <cstring>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

[[noreturn]] void refuseValue(const QString& why)
{
    throw ToldError(runtime::DataTypeConversion, why);
}

template <typename Number>
Number numberOf(const QByteArray& bytes)
{
    if (bytes.size() != qsizetype{sizeof(Number)})
        refuseValue(
            say({u"%1 bytes instead of %2", u"%1 בתים במקום %2"}, bytes.size(), sizeof(Number)));
    return qFromLittleEndian<Number>(bytes.constData());
}

/// Replaces negative zero by positive zero, so that a store contains only one of the two.
double plain(double value)
{
    return value == 0 ? 0 : value;
}

double decimal(const char* begin, const char* end)
{
    double value = 0;
    std::from_chars(begin, end, value);
    return plain(value);
}

double fromSingle(float value)
{
    std::array<char, 32> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value);
    return decimal(text.data(), written.ptr);
}

/// Converts a currency value, which is stored as an integer number of ten-thousandths. The function
/// writes the value as a decimal text and parses the text, because a division could yield a
/// slightly different double.
double fromCurrency(qint64 value)
{
    const QByteArray text = QByteArray::number(value) + "e-4";
    return decimal(text.constData(), text.constData() + text.size());
}

/// Converts a number of days since 30 December 1899 to a date or a date with a time. The fraction
/// is the time of day, which counts forward from midnight even if the number is negative.
QVariant fromDays(double days)
{
    // The upper limit for the number of days between a date and 30 December 1899, the day 0 of the
    // old file format. No date that this format can store reaches the limit.
    constexpr double farthest = 3'000'000;
    if (!(std::abs(days) < farthest))
        refuseValue(say({u"it is no date", u"זה אינו תאריך"}));
    constexpr int secondsOfDay = 24 * 60 * 60;
    double whole = 0;
    const double time = std::abs(std::modf(days, &whole));
    const int seconds = static_cast<int>(std::lround(time * secondsOfDay));
    const QDate date =
        QDate(1899, 12, 30).addDays(static_cast<qint64>(whole) + seconds / secondsOfDay);
    const int rest = seconds % secondsOfDay;
    if (rest == 0)
        return date;
    return QDateTime(date, QTime(0, 0).addSecs(rest), Qt::UTC);
}

/// Decodes a text of a Jet 4 file. An uncompressed text has two bytes per character. A compressed
/// text starts with the bytes FF FE and has one byte for each character below U+0100; a zero byte
/// switches between one and two bytes per character.
QString fromUnicode(const QByteArray& bytes)
{
    const bool compressed = bytes.startsWith("\xff\xfe");
    bool single = compressed;
    QString text;
    text.reserve(bytes.size());
    for (qsizetype i = compressed ? 2 : 0; i < bytes.size();) {
        if (compressed && bytes[i] == '\0') {
            single = !single;
            ++i;
        } else if (single) {
            text += QChar(quint16{static_cast<uchar>(bytes[i++])});
        } else if (i + 1 < bytes.size()) {
            text += QChar(qFromLittleEndian<quint16>(bytes.constData() + i));
            i += 2;
        } else {
            refuseValue(say({u"it ends in the middle of a character", u"הוא נגמר באמצע תו"}));
        }
    }
    if (!text.isValidUtf16())
        refuseValue(say({u"it contains half of a character", u"יש בו חצי תו"}));
    return text;
}

} // namespace

QVariant decodedValue(quint8 type, const QByteArray& bytes, OldFormat format,
                      const CodePage& codePage)
{
    switch (type) {
    case OldBoolean:
        return numberOf<quint8>(bytes) != 0 ? -1 : 0;
    case OldByte:
        return int{numberOf<quint8>(bytes)};
    case OldInteger:
        return int{numberOf<qint16>(bytes)};
    case OldLong:
        return int{numberOf<qint32>(bytes)};
    case OldCurrency:
        return fromCurrency(numberOf<qint64>(bytes));
    case OldSingle:
        return fromSingle(numberOf<float>(bytes));
    case OldDouble:
        return plain(numberOf<double>(bytes));
    case OldDate:
        return fromDays(numberOf<double>(bytes));
    case OldText:
    case OldMemo:
        return format == OldFormat::Jet3 ? codePage.decoded(bytes) : fromUnicode(bytes);
    default:
        refuseValue(
            say({u"its type %1 cannot be imported", u"אי אפשר לייבא את הסוג שלו, %1"}, type));
    }
}

QString decodedName(const QString& name, OldFormat format, const CodePage& codePage)
{
    if (format != OldFormat::Jet3)
        return name;
    try {
        return codePage.decoded(name.toLatin1());
    } catch (const RunTimeError&) {
        return name;
    }
}

} // namespace storetools
