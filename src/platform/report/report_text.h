#pragma once

#include <QString>
#include <QVariant>

namespace report {

/// A text as it is laid on paper: the characters and the paragraph direction they are set in.
struct DisplayText
{
    QString text;
    bool rightToLeft;

    bool operator==(const DisplayText&) const = default;
};

/// A field's value as the record source renders it: numbers and dates in the machine's form, Null
/// blank.
QString valueText(const QVariant& value);

/// The text with a blank in the place of each line break, tab or other control character.
QString onOneLine(QString text);

/// The text of a control in its reading order. A text without any letter (a number, a date, a
/// telephone) always keeps its own order from left to right, so that a sign stays in front of its
/// number; a signed number amid letters keeps its sign in front by a direction mark. It is
/// set on one line.
DisplayText displayText(const QString& text, bool rightToLeft);

} // namespace report
