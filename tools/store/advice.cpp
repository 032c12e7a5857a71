#include "tools/store/advice.h"

#include "tools/store/engine_words.h"
#include "tools/store/told_error.h"
#include "tools/store/words.h"

#include <algorithm>
#include <array>

using runtime::RunTimeError;

namespace storetools {

namespace {

struct Advice
{
    int number;
    Text text;
};

constexpr std::array advices{
    Advice{runtime::DatabaseFileNotFound,
           {u"Check the name and the folder.", u"בדוק את השם ואת התיקייה."}},
    Advice{runtime::DatabaseExists,
           {u"Choose another name, or move the existing store away.",
            u"בחר שם אחר, או העבר הצידה את מה שכבר קיים."}},
    Advice{runtime::UnrecognizedFormat,
           {u"Check that you named the right file, link or address. Import a file of the old "
            "format with zomrel-store import.",
            u"בדוק שבחרת בקובץ, בקישור או בכתובת הנכונים. קובץ ישן מייבאים בפקודה "
            "{zomrel-store import}."}},
    Advice{runtime::CorruptDatabase,
           {u"Keep the damaged file, and restore a backup with zomrel-store restore.",
            u"שמור את הקובץ הפגום בצד, ושחזר גיבוי בפקודה {zomrel-store restore}."}},
    Advice{runtime::Locked,
           {u"Another station holds the store. Close Zomrel on all stations and try again.",
            u"עמדה אחרת מחזיקה את קובץ הנתונים. צא מזומרל בכל העמדות ונסה שוב."}},
    Advice{runtime::PermissionDenied,
           {u"Check that the file and its folder exist, and ask for the right to read and write "
            "them.",
            u"בדוק שהקובץ והתיקייה שלו קיימים, ובקש הרשאה לקרוא ולכתוב בהם."}},
    Advice{runtime::ReadOnly,
           {u"Ask for the right to write the file and its folder.",
            u"בקש הרשאת כתיבה לקובץ ולתיקייה שלו."}},
    Advice{runtime::DiskFull,
           {u"Free some space on the disk and try again.", u"פנה מקום בדיסק ונסה שוב."}},
    Advice{runtime::DiskOrNetworkError,
           {u"Check the disk and the network and try again.", u"בדוק את הדיסק ואת הרשת ונסה שוב."}},
    Advice{runtime::ConnectionFailed,
           {u"Check the network, the server, the user and the password.",
            u"בדוק את הרשת, את השרת, את שם המשתמש ואת הסיסמה."}},
    Advice{
        runtime::CallFailed,
        {u"Check the network and the server and try again.", u"בדוק את הרשת ואת השרת ונסה שוב."}},
    Advice{runtime::OperationNotSupported,
           {u"Check that you named the right store. The manual page of zomrel-store tells what "
            "the command works on.",
            u"בדוק שבחרת בקובץ הנתונים הנכון. בדף ההוראות של {zomrel-store} כתוב על מה הפקודה "
            "פועלת."}},
};

constexpr Text adviceOnOthers{
    u"Run zomrel-store check. If that does not help, keep this message and ask for support.",
    u"הרץ {zomrel-store check}. אם זה לא עוזר, שמור את ההודעה הזאת ופנה לתמיכה."};

} // namespace

QString happened(const RunTimeError& error)
{
    if (dynamic_cast<const ToldError*>(&error) != nullptr)
        return error.description();
    if (const std::optional<QString> known = translated(error.description()))
        return *known;
    const QString general = translated(runtime::errorDescription(error.number()))
                                .value_or(say({u"Internal error.", u"שגיאה פנימית."}));
    return say({u"%1 Details: %2", u"%1 פרטים: %2"}, Phrase{general}, error.description());
}

QString nextStep(const RunTimeError& error)
{
    const auto* told = dynamic_cast<const ToldError*>(&error);
    if (told != nullptr && !told->nextStep().isEmpty())
        return told->nextStep();
    const auto found = std::ranges::find(advices, error.number(), &Advice::number);
    return say(found == advices.end() ? adviceOnOthers : found->text);
}

} // namespace storetools
