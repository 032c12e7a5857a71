#include "tools/store/advice.h"

#include "platform/runtime/run_time_error.h"

#include <algorithm>
#include <array>

namespace storetools {

namespace {

struct Advice
{
    int number;
    const char16_t* text;
};

constexpr std::array advices{
    Advice{runtime::DatabaseFileNotFound, u"הקובץ לא נמצא. בדוק את השם ואת התיקייה."},
    Advice{runtime::DatabaseExists, u"כבר יש קובץ או מסד בשם הזה. בחר שם אחר, או העבר אותו הצידה."},
    Advice{runtime::UnrecognizedFormat,
           u"זה אינו קובץ נתונים של זומרל. בדוק שבחרת בקובץ הנכון; קובץ "
           u"של גרסה ישנה מייבאים בפקודה import."},
    Advice{runtime::CorruptDatabase,
           u"קובץ הנתונים פגום. שמור אותו בצד ושחזר גיבוי בפקודה restore."},
    Advice{runtime::Locked, u"עמדה אחרת מחזיקה את קובץ הנתונים. צא מזומרל בכל העמדות ונסה שוב."},
    Advice{runtime::PermissionDenied,
           u"אין גישה לקובץ או לתיקייה. בדוק שהם קיימים, ובקש הרשאה לקרוא ולכתוב בהם."},
    Advice{runtime::ReadOnly, u"אסור לכתוב בקובץ. בקש הרשאת כתיבה לקובץ ולתיקייה שלו."},
    Advice{runtime::DiskFull, u"הדיסק מלא. פנה מקום ונסה שוב."},
    Advice{runtime::DiskOrNetworkError, u"הדיסק או הרשת נכשלו. בדוק אותם ונסה שוב."},
    Advice{runtime::ConnectionFailed, u"אין קשר לשרת, או שהכניסה נדחתה. בדוק רשת, שרת וסיסמה."},
    Advice{runtime::CallFailed, u"הקשר לשרת נותק באמצע. בדוק את הרשת ונסה שוב."},
};

} // namespace

QString hebrewAdvice(int errorNumber)
{
    const auto found = std::find_if(advices.begin(), advices.end(),
                                    [=](const Advice& each) { return each.number == errorNumber; });
    return found == advices.end() ? QString() : QString::fromUtf16(found->text);
}

} // namespace storetools
