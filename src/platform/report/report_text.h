#pragma once

#include <QString>
#include <QVariant>

namespace report {

/// A text prepared for display: its characters and its paragraph direction.
struct DisplayText
{
    QString text;
    bool rightToLeft;

    bool operator==(const DisplayText&) const = default;
};

/// Formats a field's value: numbers and dates follow the system locale, and Null is an empty text.
QString valueText(const QVariant& value);

/// Replaces each line break, tab and other control character by a space.
QString onOneLine(QString text);

/// Returns a control's text as a single line with its paragraph direction. A text without letters,
/// such as a number, a date or a telephone number, always reads left-to-right, so that the sign
/// stays in front of the number. If a text with letters contains a signed number, a direction mark
/// keeps the sign in front of that number.
DisplayText displayText(const QString& text, bool rightToLeft);

} // namespace report
