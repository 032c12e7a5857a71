#include "shell/error_explanations.h"

#include "platform/runtime/explanation.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace shell {

namespace {

/// The number of the run-time error that ends the program after its store was replaced or restored.
constexpr int storeReplaced = 3197;

struct Explanation
{
    int number;
    const char16_t* happened;
    const char16_t* next;
    /// The explanation is used only for errors whose description begins with this text. An empty
    /// text fits every description. The first explanation that fits an error is used. Among
    /// explanations of the same error number, the one with the empty text therefore comes last.
    QLatin1StringView description = {};
};

const char16_t* const enterAgain =
    u"הפעל את התוכנית מחדש, בדוק אם השורה האחרונה נמצאת בהזמנה, ואם לא – הקלד אותה שוב. אם זה "
    u"חוזר, הרץ zomrel-store check.";
const char16_t* const useA4 = u"קבע A4 במדפסת ברירת המחדל, הפעל את התוכנית מחדש והדפס שוב.";
const char16_t* const checkStore = u"הפעל את התוכנית מחדש. אם זה חוזר, הרץ zomrel-store check על "
                                   u"קובץ הנתונים ושחזר גיבוי אם צריך.";

const std::array explanations{
    Explanation{runtime::TypeMismatch, u"באחת מתיבות המידה יש אות, סימן או רווח במקום מספר.",
                u"הפעל את התוכנית מחדש והקלד את השורה שוב, בספרות בלבד."},
    Explanation{runtime::DataTypeConversion,
                u"בהורדה של סדרה כתוב משהו שאינו מספר, או שבקובץ הנתונים יש ערך לא מתאים.",
                u"הפעל את התוכנית מחדש והקלד שוב, בספרות בלבד. אם לא הקלדת דבר, הרץ zomrel-store "
                u"check."},
    Explanation{runtime::DivisionByZero, u"החישוב מחלק באפס: עובי השלב הוא 0, או שלסדרה 0 כנפיים.",
                u"הפעל את התוכנית מחדש ותקן את עובי השלב או את הסדרה."},
    Explanation{runtime::Overflow, u"נגמרו המספרים של אחת הטבלאות בקובץ הנתונים.",
                u"שמור את קובץ הנתונים בצד, וצור קובץ חדש בעזרת zomrel-store create.",
                "Overflow ("_L1},
    // This explanation of the error Overflow (6) names two causes, because an order number that is
    // too large and a measure that is too large give errors with the same description.
    Explanation{runtime::Overflow, u"נגמרו מספרי ההזמנות, או שמידה גדולה מדי.",
                u"אם מספר ההזמנה האחרונה הוא 32767, שמור את קובץ הנתונים בצד וצור קובץ חדש בעזרת "
                u"zomrel-store create. אחרת הפעל את התוכנית מחדש ובדוק את המידות."},
    Explanation{runtime::FieldTooSmall, u"טקסט ארוך מהשדה שלו.",
                u"הפעל את התוכנית מחדש וקצר את השם, הסוג או הצבע."},
    Explanation{runtime::InvalidUseOfNull, u"בקובץ הנתונים חסר ערך.",
                u"הפעל את התוכנית מחדש, מחק את השורה או הסדרה שעמדת עליה והקלד אותה מחדש."},
    Explanation{runtime::NoCurrentRecord, u"אין רשומה לעבוד עליה: הרשימה ריקה, או שהסדרה נמחקה.",
                u"הפעל את התוכנית מחדש, ובחר סדרה או הזמנה אחרת."},
    Explanation{runtime::RecordDeleted, u"עמדה אחרת מחקה את מה שעמדת עליו.",
                u"הפעל את התוכנית מחדש ופתח את ההזמנה או הרשימה שוב."},
    Explanation{runtime::DuplicateKey, u"רשומה עם אותו מפתח כבר קיימת, אולי מעמדה אחרת.",
                enterAgain},
    Explanation{runtime::FieldRequired,
                u"בקובץ הנתונים יש שדה שחייב להיות מלא, והתוכנית השאירה אותו ריק.", checkStore},
    Explanation{runtime::InvalidPropertyValue, u"בסדרה רשום מספר כנפיים או נתיבים שאינו ברשימה.",
                u"הפעל את התוכנית מחדש, מחק את הסדרה והוסף אותה מחדש."},
    Explanation{runtime::ObjectNotSet, u"ההזמנה שנטענה כבר אינה קיימת.",
                u"הפעל את התוכנית מחדש ופתח הזמנה אחרת."},
    Explanation{runtime::ObjectRequired, u"אין בתוכנית מסך למיקום חדש של קובץ הנתונים.",
                u"בדוק את המחשב הראשי ואת הרשת, והפעל את התוכנית מחדש."},
    Explanation{runtime::OutOfMemory, u"נגמר הזיכרון של המחשב.",
                u"סגור תוכניות אחרות והפעל את התוכנית מחדש."},
    Explanation{runtime::DatabaseFileNotFound, u"קובץ הנתונים Aluminium.mdb לא נמצא בתיקייה שלו.",
                u"חבר את הרשת או את הדיסק, או החזר את הקובץ למקומו, והפעל את התוכנית מחדש. רק אם "
                u"הקובץ אבד, שחזר גיבוי בעזרת zomrel-store restore."},
    Explanation{runtime::UnrecognizedFormat,
                u"הקישור אל קובץ הנתונים או אל השרת פגום; הסיבה כתובה למעלה.",
                u"כתוב את הקישור מחדש בעזרת zomrel-store link, והפעל את התוכנית מחדש.",
                "The store link '"_L1},
    Explanation{runtime::UnrecognizedFormat, u"המסד בשרת נוצר בקידוד אחר, ולא ב-UTF8.",
                u"צור מסד חדש ב-UTF8, כפי שכתוב בפרק 7 של המדריך (F1), וכתוב אליו קישור בעזרת "
                u"zomrel-store link.",
                "The encoding of "_L1},
    Explanation{runtime::UnrecognizedFormat, u"הקובץ או המסד שנמצא במקום קובץ הנתונים אינו שלו.",
                u"החזר את הקובץ הנכון או שחזר גיבוי בעזרת zomrel-store restore. קובץ של גרסה ישנה "
                u"מייבאים בעזרת zomrel-store import."},
    Explanation{runtime::Locked, u"עמדה אחרת החזיקה את הנתונים נעולים יותר מחמש שניות.",
                u"הפעל את התוכנית מחדש ונסה שוב. אם זה חוזר, צא מהתוכנית בכל העמדות."},
    Explanation{runtime::CorruptDatabase, u"קובץ הנתונים פגום.",
                u"שמור את הקובץ הפגום בצד, הרץ עליו zomrel-store check, ושחזר את הגיבוי האחרון "
                u"בעזרת zomrel-store restore."},
    Explanation{runtime::ConnectionFailed, u"אין קשר לשרת הנתונים, או שהוא דחה את הכניסה.",
                u"בדוק את השרת, את הרשת ואת הסיסמה, והפעל את התוכנית מחדש."},
    Explanation{runtime::CallFailed, u"הקשר לשרת הנתונים נותק באמצע פעולה.",
                u"הפעל את התוכנית מחדש, ובדוק ברשימה אם השורה האחרונה נשמרה. הקלד אותה שוב רק אם "
                u"היא חסרה."},
    Explanation{runtime::PermissionDenied, u"אין הרשאה לפתוח את קובץ הנתונים או את המסד.",
                u"בקש ממנהל המחשב הרשאת קריאה וכתיבה לקובץ ולתיקייה שלו."},
    Explanation{runtime::ReadOnly, u"מותר לקרוא את קובץ הנתונים ואסור לכתוב בו.",
                u"בקש ממנהל המחשב הרשאת כתיבה לקובץ ולתיקייה שלו."},
    Explanation{runtime::DiskFull, u"הדיסק מלא.", u"פנה מקום בדיסק, והפעל את התוכנית מחדש."},
    Explanation{runtime::DiskOrNetworkError, u"הדיסק או הרשת נכשלו באמצע פעולה.",
                u"בדוק את הדיסק ואת הרשת, הרץ zomrel-store check, והפעל את התוכנית מחדש."},
    Explanation{runtime::TableNotFound, u"בקובץ הנתונים חסרה טבלה.", checkStore},
    Explanation{runtime::ItemNotFound, u"בקובץ הנתונים חסרים טבלה, שדה או אינדקס.", checkStore},
    Explanation{runtime::InvalidPicture, u"הקובץ Logo.jpg אינו תמונה תקינה.",
                u"החלף את הקובץ או הסר אותו, הפעל את התוכנית מחדש והדפס שוב."},
    Explanation{runtime::ReportWidthTooLarge, u"הנייר של מדפסת ברירת המחדל צר מדי.", useA4},
    Explanation{runtime::InvalidProcedureCall, u"הנייר של מדפסת ברירת המחדל קצר מדי.", useA4,
                "Report section is higher"_L1},
    Explanation{runtime::InvalidProcedureCall, u"מסך ההזמנות לא היה זמין כשנבחרה סדרה.",
                u"הפעל את התוכנית מחדש, פתח את ההזמנה ובחר את הסדרה שוב."},
    Explanation{storeReplaced, u"קובץ הנתונים הוחלף או שוחזר בזמן שהתוכנית עבדה איתו.",
                u"הפעל את התוכנית מחדש, ובדוק אם השורה האחרונה נמצאת."},
};

constexpr Explanation unknown{
    0, u"שגיאה פנימית.",
    u"רשום את המספר, את התיאור ואת מה שעשית, והפעל את התוכנית מחדש. אם זה חוזר, הרץ zomrel-store "
    u"check ופנה לתמיכה."};

} // namespace

QString explanationOf(const runtime::RunTimeError& error)
{
    const auto found =
        std::find_if(explanations.begin(), explanations.end(), [&](const Explanation& each) {
            return each.number == error.number() &&
                   error.description().startsWith(each.description);
        });
    const Explanation& explanation = found == explanations.end() ? unknown : *found;
    return u"מה קרה: %1\n"
           "מה שמור: כל מה שנשמר לפני כן. שום שורה לא נשמרה למחצה; מה שהיה רק בתיבות אבד.\n"
           "מה עושים: %2"_s.arg(QString::fromUtf16(explanation.happened),
                                QString::fromUtf16(explanation.next));
}

void installErrorExplanations()
{
    runtime::explanationDoor().replace(explanationOf);
}

} // namespace shell
