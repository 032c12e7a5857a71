#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

#include <cstdint>

/// Conversions between field values, numbers and texts. They use the default QLocale, which holds
/// the machine's regional settings. All conversions are strict: a text with trailing characters
/// that are not part of a number is an error.
namespace runtime {

/// Returns true for a database Null (an invalid or null QVariant). An empty text is not Null.
bool isNull(const QVariant& value);

/// Parses a number: optional blanks around it, at most one sign, ASCII digits with at most one
/// decimal sign (the locale's or a point) and an optional exponent. Group separators are not
/// accepted. Throws TypeMismatch (13) for any other text, including an empty one, and Overflow (6)
/// if the number exceeds a double.
double toDouble(const QString& text);

/// Converts a number, text or Boolean (True is -1) to a double. Throws InvalidUseOfNull (94) for
/// Null and TypeMismatch (13) for a value that is not a number.
double toDouble(const QVariant& value);

/// The functions toInt16 and toInt32 round half to even. They throw Overflow (6) for NaN and
/// outside the integer's range. The overloads for QVariant also throw InvalidUseOfNull (94) and
/// TypeMismatch (13).
std::int16_t toInt16(double value);
std::int16_t toInt16(const QVariant& value);
std::int32_t toInt32(double value);
std::int32_t toInt32(const QVariant& value);

/// Formats a number with at most 15 significant digits, the locale's decimal sign and an ASCII
/// minus, without trailing zeros and group separators. Absolute values from 1e15 up, and those
/// below 1e-4 except 0, have an exponent ("1E+15").
QString toText(double value);

/// Formats the value of a field: a number as toText(double) does, a date in the locale's short
/// format. Throws InvalidUseOfNull (94) for Null.
QString toText(const QVariant& value);

/// Formats a field's value like toText. Returns an empty text for Null.
QString textOrEmpty(const QVariant& value);

/// Formats a date in the locale's short format, with a four-digit year. The C locale gives
/// day/month/year.
QString toShortDate(const QDate& date);

} // namespace runtime
