#include "platform/dao/engine/values.h"

#include "platform/runtime/conversions.h"
#include "platform/runtime/run_time_error.h"

#include <QDateTime>

#include <cmath>

namespace dao {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

double number(const QVariant& value)
{
    const double result = runtime::toDouble(value);
    if (!std::isfinite(result))
        throw RunTimeError(runtime::Overflow);
    return result;
}

/// Returns a QDate if the time is midnight, and a QDateTime for any other time of day. The year
/// must be between 1 and 9999, because stored values have four digits for the year. The QDateTime
/// is in UTC, because local time has a gap when daylight saving time starts.
QVariant moment(const QDate& date, const QTime& time)
{
    if (!date.isValid() || !time.isValid() || date.year() < 1 || date.year() > 9999)
        throw RunTimeError(runtime::DataTypeConversion);
    const QTime whole(time.hour(), time.minute(), time.second());
    if (whole == QTime(0, 0))
        return date;
    return QDateTime(date, whole, Qt::UTC);
}

QVariant momentOf(const QString& text)
{
    constexpr qsizetype dateLength = 10;
    const QDate date = QDate::fromString(text.left(dateLength), u"yyyy-MM-dd"_s);
    if (text.size() <= dateLength)
        return moment(date, QTime(0, 0));
    if (text[dateLength] != u'T' && text[dateLength] != u' ')
        throw RunTimeError(runtime::DataTypeConversion);
    return moment(date, QTime::fromString(text.mid(dateLength + 1), Qt::ISODate));
}

QVariant momentOf(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::QDate:
        return moment(value.toDate(), QTime(0, 0));
    case QMetaType::QDateTime:
        return moment(value.toDateTime().date(), value.toDateTime().time());
    case QMetaType::QString:
        return momentOf(value.toString().trimmed());
    default:
        throw RunTimeError(runtime::DataTypeConversion);
    }
}

QString textOf(const QVariant& value)
{
    const QString text = runtime::toText(value);
    if (text.isNull())
        return u""_s;
    // Each unpaired surrogate (half of a UTF-16 pair) is replaced, because it would damage the
    // character that follows it.
    return text.isValidUtf16() ? text : QString::fromUtf8(text.toUtf8());
}

QVariant valueOf(DataType type, const QVariant& value)
{
    try {
        switch (type) {
        case dbBoolean:
            return number(value) != 0 ? -1 : 0;
        case dbInteger:
            return int{runtime::toInt16(number(value))};
        case dbLong:
            return int{runtime::toInt32(number(value))};
        case dbDouble:
            return number(value);
        case dbDate:
            return momentOf(value);
        case dbText:
            break;
        }
        return textOf(value);
    } catch (const RunTimeError& error) {
        if (error.number() == runtime::TypeMismatch)
            throw RunTimeError(runtime::DataTypeConversion);
        throw;
    }
}

} // namespace

QVariant fromStored(const FieldInfo& field, const QVariant& stored)
{
    if (runtime::isNull(stored))
        return initialValue(field);
    return valueOf(field.type, stored);
}

QVariant converted(const FieldInfo& field, const QVariant& assigned)
{
    if (runtime::isNull(assigned))
        return initialValue(field);
    QVariant value = valueOf(field.type, assigned);
    if (field.type == dbText && field.size > 0 && value.toString().size() > field.size)
        throw RunTimeError(runtime::FieldTooSmall);
    return value;
}

QVariant toStored(const FieldInfo& field, const QVariant& value)
{
    if (field.type != dbDate || runtime::isNull(value))
        return value;
    if (value.typeId() == QMetaType::QDate)
        return value.toDate().toString(u"yyyy-MM-dd"_s);
    return value.toDateTime().toString(u"yyyy-MM-ddTHH:mm:ss"_s);
}

QVariant initialValue(const FieldInfo& field)
{
    return field.type == dbBoolean ? QVariant(0) : QVariant();
}

} // namespace dao
