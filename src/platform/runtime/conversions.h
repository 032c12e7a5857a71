#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

#include <cstdint>

/// Conversions of values as the run-time system does them, under the default QLocale: the machine's
/// regional settings. All are strict: what is no number is an error and never a lenient prefix.
namespace runtime {

/// True for a database Null (an invalid or null variant). An empty text is no Null.
bool isNull(const QVariant& value);

/// A text as a number: blanks around it, at most one sign, ASCII digits with at most one decimal
/// sign (the machine's or the point) and an optional exponent. No group separators. Raises 13 for
/// anything else, the empty text included; 6 where the number exceeds a double.
double toDouble(const QString& text);

/// A number, text or Boolean (True is -1) as a double. Raises 94 for Null, 13 for no number.
double toDouble(const QVariant& value);

/// Narrowing, rounded half to even. Raises 6 outside the range and for NaN; from a variant also
/// 94, 13.
std::int16_t toInt16(double value);
std::int16_t toInt16(const QVariant& value);
std::int32_t toInt32(double value);
std::int32_t toInt32(const QVariant& value);

/// General conversion: at most 15 significant digits, no trailing zeros, the machine's decimal
/// sign, no group separators, ASCII minus; an exponent ("1E+15") from 1e15 up and below 1e-4.
QString toText(double value);

/// A field's value as text: numbers as above, dates in the short form. Raises 94 for Null.
QString toText(const QVariant& value);

/// A date in the system's default short form, the year with four digits; day/month/year where the
/// machine names no region.
QString toShortDate(const QDate& date);

} // namespace runtime
