#include "platform/runtime/conversions.h"

#include "platform/runtime/run_time_error.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>

#include <charconv>
#include <cmath>
#include <limits>

namespace runtime {

namespace {

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

QStringView withoutBlanks(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

/// Moves the leading digits of `text` to `out` and returns the number of moved digits.
qsizetype takeDigits(QStringView& text, QByteArray& out)
{
    qsizetype count = 0;
    while (!text.isEmpty() && text.front() >= u'0' && text.front() <= u'9') {
        out.append(text.front().toLatin1());
        text = text.sliced(1);
        ++count;
    }
    return count;
}

void takeSign(QStringView& text, QByteArray& out)
{
    if (text.isEmpty() || (text.front() != u'+' && text.front() != u'-'))
        return;
    if (text.front() == u'-')
        out.append('-');
    text = text.sliced(1);
}

bool takeDecimalSign(QStringView& text, QByteArray& out)
{
    if (text.isEmpty())
        return false;
    if (text.front() != u'.' && QString(text.front()) != QLocale().decimalPoint())
        return false;
    out.append('.');
    text = text.sliced(1);
    return true;
}

/// Returns the number that a user has typed, rewritten in the notation of the C locale. Returns an
/// empty value if the text is not a number.
QByteArray plainNumber(QStringView text)
{
    QByteArray plain;
    takeSign(text, plain);
    qsizetype digits = takeDigits(text, plain);
    if (takeDecimalSign(text, plain))
        digits += takeDigits(text, plain);
    if (digits == 0)
        return {};
    if (!text.isEmpty() && (text.front() == u'e' || text.front() == u'E')) {
        text = text.sliced(1);
        plain.append('e');
        takeSign(text, plain);
        if (takeDigits(text, plain) == 0)
            return {};
    }
    return text.isEmpty() ? plain : QByteArray();
}

template <typename Integer>
Integer narrowed(double value)
{
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<Integer>::min() &&
          rounded <= std::numeric_limits<Integer>::max()))
        throw RunTimeError(Overflow);
    return static_cast<Integer>(rounded);
}

} // namespace

bool isNull(const QVariant& value)
{
    return !value.isValid() || value.isNull();
}

double toDouble(const QString& text)
{
    const QByteArray plain = plainNumber(withoutBlanks(text));
    if (plain.isEmpty())
        throw RunTimeError(TypeMismatch);
    double value = 0;
    const auto result = std::from_chars(plain.constData(), plain.constData() + plain.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        // std::from_chars reports overflow and underflow with the same error. QLocale::toDouble
        // distinguishes them, because it returns 0 only for an underflow.
        if (QLocale::c().toDouble(QString::fromLatin1(plain)) != 0)
            throw RunTimeError(Overflow);
        return 0;
    }
    return value;
}

double toDouble(const QVariant& value)
{
    if (isNull(value))
        throw RunTimeError(InvalidUseOfNull);
    switch (value.typeId()) {
    case QMetaType::QString:
        return toDouble(value.toString());
    case QMetaType::Bool:
        return value.toBool() ? -1 : 0;
    case QMetaType::Short:
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return value.toDouble();
    default:
        throw RunTimeError(TypeMismatch);
    }
}

std::int16_t toInt16(double value)
{
    return narrowed<std::int16_t>(value);
}

std::int16_t toInt16(const QVariant& value)
{
    return toInt16(toDouble(value));
}

std::int32_t toInt32(double value)
{
    return narrowed<std::int32_t>(value);
}

std::int32_t toInt32(const QVariant& value)
{
    return toInt32(toDouble(value));
}

QString toText(double value)
{
    if (value == 0)
        // Negative zero is shown without a sign.
        return QStringLiteral("0");
    QString text = QString::number(value, 'g', 15);
    text.replace(u'e', u'E');
    return text.replace(QStringLiteral("."), QLocale().decimalPoint());
}

QString toText(const QVariant& value)
{
    if (isNull(value))
        throw RunTimeError(InvalidUseOfNull);
    switch (value.typeId()) {
    case QMetaType::QString:
        return value.toString();
    case QMetaType::QDate:
        return toShortDate(value.toDate());
    case QMetaType::QDateTime: {
        const QDateTime moment = value.toDateTime();
        return toShortDate(moment.date()) + u' ' +
               moment.time().toString(QStringLiteral("HH:mm:ss"));
    }
    default:
        return toText(toDouble(value));
    }
}

QString textOrEmpty(const QVariant& value)
{
    return isNull(value) ? QString() : toText(value);
}

QString toShortDate(const QDate& date)
{
    const QLocale locale;
    if (locale.language() == QLocale::C)
        return date.toString(QStringLiteral("dd/MM/yyyy"));
    QString format = locale.dateFormat(QLocale::ShortFormat);
    static const QRegularExpression twoDigitYear(QStringLiteral("(?<!y)yy(?!y)"));
    format.replace(twoDigitYear, QStringLiteral("yyyy"));
    return locale.toString(date, format);
}

} // namespace runtime
