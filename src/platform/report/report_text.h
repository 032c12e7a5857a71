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

/// Returns a field's value as text. Numbers and dates follow the system locale, and a Null becomes
/// an empty text.
QString valueText(const QVariant& value);

/// Returns the text with each line break, tab and other control character replaced by a space.
QString onOneLine(QString text);

/// Returns a control's text as a single line, with its paragraph direction. A text without letters,
/// such as a number, a date or a telephone number, always reads left-to-right, so that a plus or
/// minus sign stays in front of its number. In a text with letters, an invisible direction mark
/// keeps such a sign in front of its number.
DisplayText displayText(const QString& text, bool rightToLeft);

} // namespace report
