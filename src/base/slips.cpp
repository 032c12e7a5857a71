#include "base/slips.h"

#include "platform/runtime/conversions.h"
#include "platform/runtime/direction_marks.h"
#include "platform/runtime/run_time_error.h"

#include <QLineEdit>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace base {

namespace {

/// The amber background of a box with a mistake. Black text has a contrast of more than 13 to 1 on
/// this colour.
constexpr QColor tint(255, 213, 128);

bool isPlain(const QString& text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar each) { return each >= u'0' && each <= u'9'; });
}

std::optional<double> numberIn(const QString& text)
{
    try {
        return runtime::toDouble(text);
    } catch (const runtime::RunTimeError&) {
        return {};
    }
}

void showSlip(QLineEdit& box)
{
    const QString slip = slipIn(box.text());
    if (slip == box.toolTip())
        return;
    box.setToolTip(slip);
    QPalette palette; // Without colours of its own, so that the box inherits all of them.
    if (!slip.isEmpty()) {
        palette.setColor(QPalette::Base, tint);
        palette.setColor(QPalette::Text, Qt::black);
    }
    box.setPalette(palette);
}

} // namespace

QString slipIn(const QString& text)
{
    if (isPlain(text))
        return {};
    if (const auto number = numberIn(text))
        return u"כאן כתוב %1 ולא ספרות בלבד. בדוק את המידה: התוכנית עלולה לקרוא %2."_s.arg(
            runtime::leftToRight(text), runtime::leftToRight(runtime::toText(*number)));
    return u"%1 אינו מספר. כתוב ספרות בלבד: עם הטקסט הזה החישוב ייכשל והתוכנית תיסגר."_s.arg(
        runtime::leftToRight(text));
}

void showSlips(QLineEdit& box)
{
    QObject::connect(&box, &QLineEdit::textChanged, &box, [&box] { showSlip(box); });
    showSlip(box);
}

} // namespace base
