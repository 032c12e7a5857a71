#include "platform/report/report_text.h"

#include "platform/runtime/conversions.h"
#include "platform/runtime/direction_marks.h"

#include <algorithm>

namespace report {

namespace {

bool isLetter(QChar c)
{
    switch (c.direction()) {
    case QChar::DirL:
    case QChar::DirR:
    case QChar::DirAL:
        return true;
    default:
        return false;
    }
}

bool breaksLine(QChar c)
{
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

bool isSign(QChar c)
{
    return c == u'-' || c == u'+';
}

/// Returns true if the character at this position is the sign of a number. The sign of a number is
/// followed by a digit, and it is at the start of the text or after a space.
bool startsSignedNumber(const QString& text, qsizetype at)
{
    return isSign(text[at]) && at + 1 < text.size() && text[at + 1].isDigit() &&
           (at == 0 || text[at - 1].isSpace());
}

QString withSignsHeld(const QString& text)
{
    QString held;
    held.reserve(text.size() + 4);
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (startsSignedNumber(text, i))
            held.append(runtime::leftToRightMark);
        held.append(text[i]);
    }
    return held;
}

} // namespace

QString valueText(const QVariant& value)
{
    return runtime::textOrEmpty(value);
}

QString onOneLine(QString text)
{
    std::replace_if(text.begin(), text.end(), breaksLine, QChar(u' '));
    return text;
}

DisplayText displayText(const QString& text, bool rightToLeft)
{
    const QString plain = onOneLine(text);
    if (std::none_of(plain.cbegin(), plain.cend(), isLetter))
        return {plain, false};
    return {withSignsHeld(plain), rightToLeft};
}

} // namespace report
