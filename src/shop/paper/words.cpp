#include "shop/paper/words.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace shop::paper {

namespace {

QString reasonWords(const Fault& fault)
{
    const QString value = numberText(fault.value);
    const QString limit = numberText(fault.limit);
    switch (fault.reason) {
    case Fault::Reason::IsNull:
        return u"חסר ערך בשדה %1"_s.arg(fault.field);
    case Fault::Reason::NotAboveZero:
        return u"האורך %1 בשדה %2 אינו גדול מאפס"_s.arg(value, fault.field);
    case Fault::Reason::TooLong:
        return u"האורך %1 בשדה %2 גדול מהאורך השימושי של מוט, %3"_s.arg(value, fault.field, limit);
    case Fault::Reason::NegativeCount:
        return u"הכמות %1 בשדה %2 שלילית"_s.arg(value, fault.field);
    case Fault::Reason::TooMany:
        break;
    }
    return u"השדה %1 נותן %2 יחידות, יותר מ-%3"_s.arg(fault.field, value, limit);
}

} // namespace

QString partWord(Part part)
{
    switch (part) {
    case Part::Frame:
        return u"משקוף"_s;
    case Part::Sash:
        return u"כנף"_s;
    case Part::Mesh:
        return u"רשת"_s;
    case Part::Guide:
        return u"מסילה"_s;
    case Part::Slat:
        return u"שלב"_s;
    case Part::Box:
        return u"ארגז"_s;
    case Part::Glass:
        break;
    }
    return u"זכוכית"_s;
}

QString sideWord(Side side)
{
    return side == Side::Width ? u"רוחב"_s : u"גובה"_s;
}

QString kindWord(const QString& kind)
{
    return kind.trimmed().isEmpty() ? u"ללא סוג"_s : kind;
}

QString groupWords(const GroupKey& group)
{
    QStringList words{partWord(group.part)};
    if (group.profile != words.first())
        words.append(kindWord(group.profile));
    if (!group.colour.trimmed().isEmpty())
        words.append(group.colour);
    return words.join(u", "_s);
}

QString faultWords(const Fault& fault)
{
    return u"הזמנה %1, שורה %2, %3, %4: %5"_s.arg(fault.order)
        .arg(fault.line)
        .arg(partWord(fault.part), sideWord(fault.side), reasonWords(fault));
}

QString proofWords(const GroupPlan& plan)
{
    if (plan.proved)
        return u"הוכח: אין תוכנית עם פחות מוטות"_s;
    const int above = plan.barCount() - plan.bound;
    if (above == 1)
        return u"לכל היותר מוט אחד מעל הגבול התחתון"_s;
    return u"לכל היותר %1 מוטות מעל הגבול התחתון"_s.arg(above);
}

} // namespace shop::paper
