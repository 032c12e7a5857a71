#include "platform/controls/refusal.h"

#include "platform/runtime/run_time_error.h"

namespace controls {

using namespace Qt::StringLiterals;

namespace {

QString reason(const runtime::RunTimeError& error)
{
    switch (error.number()) {
    case runtime::FieldTooSmall:
        return u"הטקסט ארוך מדי לשדה."_s;
    case runtime::FieldRequired:
        return u"חסר ערך בשדה שחייב להיות מלא."_s;
    case runtime::DuplicateKey:
        return u"כבר קיימת שורה עם אותו ערך."_s;
    case runtime::DataTypeConversion:
    case runtime::TypeMismatch:
    case runtime::Overflow:
        return u"הערך אינו מתאים לסוג השדה."_s;
    case runtime::Locked:
        return u"הנתונים תפוסים כרגע על ידי תחנה אחרת."_s;
    case runtime::RecordDeleted:
        return u"השורה נמחקה בינתיים על ידי תחנה אחרת."_s;
    case runtime::ReadOnly:
    case runtime::PermissionDenied:
        return u"קובץ הנתונים פתוח לקריאה בלבד."_s;
    case runtime::DiskFull:
        return u"אין די מקום בדיסק."_s;
    case runtime::DiskOrNetworkError:
        return u"הגישה לדיסק או לרשת נכשלה."_s;
    case runtime::CallFailed:
    case runtime::ConnectionFailed:
        return u"אין קשר לשרת הנתונים."_s;
    default:
        return u"קובץ הנתונים דחה את הפעולה (%1)."_s.arg(error.number());
    }
}

} // namespace

QString writeRefusal(const runtime::RunTimeError& error)
{
    return u"השורה לא נשמרה: "_s + reason(error) +
           u"\nתקן את השורה, או לחץ Esc כדי לוותר על השינוי."_s;
}

QString deleteRefusal(const runtime::RunTimeError& error)
{
    return u"השורה לא נמחקה: "_s + reason(error);
}

QString readRefusal(const runtime::RunTimeError& error)
{
    return u"השורה לא נקראה: "_s + reason(error);
}

} // namespace controls
