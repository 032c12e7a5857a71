#include "store/access_error.h"

#include "platform/runtime/explanation.h"
#include "platform/runtime/message_box.h"
#include "platform/runtime/process.h"
#include "platform/runtime/run_time_error.h"
#include "store/file_manager.h"

using namespace Qt::StringLiterals;

namespace store {

namespace {

constexpr std::int32_t notAValidPath = 3044;
constexpr std::int32_t lockedByUser = 3261;
constexpr std::int32_t tableLocked = 3262;
constexpr std::int32_t dialogCancelled = 32755;

constexpr int errorFlags = runtime::vbCritical + runtime::vbMsgBoxRtlReading;

const QString title = u"שגיאה"_s;

runtime::MessageBoxAnswer show(const QString& text, int buttons = runtime::vbOKOnly)
{
    return runtime::MsgBox(text, buttons + errorFlags, title);
}

void reportLocked(const QString& text)
{
    runtime::messageBoxDoor()({text + u"\r"
                                      "עצות:"
                                      "\r"
                                      "בסיס הנתונים נעול על ידי משתמש אחר,נא תצא מכל העמדות של "
                                      "התוכנה או תנסה להפעיל מחדש את כל המחשבים !"_s,
                               errorFlags, title,
                               runtime::explanationDoor()(runtime::RunTimeError(runtime::Locked))});
    runtime::EndProcess(1);
}

void reportNoAccess(const QString& text)
{
    const runtime::MessageBoxAnswer answer =
        show(text + u"\r"
                    "אין גישה לקובץ ! סיבות :"
                    "\r"
                    "(1) המחשב הראשי שעליו קיימים הנתונים לתוכנה כבוי."
                    " (2) הגישה דרך הרשת למחשב הראשי לא עובדת כראוי."
                    " (3) הנתיב של הקובץ השתנה,אז עליכם להכניס נתיב חדש לקובץ."
                    "\r"
                    "\r"
                    "האם ברצונך לנסות שוב לגשת לקובץ מחדש ? "
                    "(קודם עליכם לבדוק שהמחשב הראשי עובד כראוי / או לסדר את חיבורי הרשת מחדש)."
                    "\r"
                    "או לקבוע מיקום חדש לקובץ (לא/NO)."_s,
             runtime::vbYesNoCancel);
    if (answer == runtime::vbYes)
        startFileManager();
    else if (answer == runtime::vbNo)
        // The answer No is meant for entering a new path of the store. The program has no form for
        // that, so it throws ObjectRequired (424).
        throw runtime::RunTimeError(runtime::ObjectRequired);
}

} // namespace

void ReportAccessError(std::int32_t errorNumber, const QString& errorDescription)
{
    const QString text =
        u"שגיאה מספר: ("_s + QString::number(errorNumber) + u") - תאור: "_s + errorDescription;
    switch (errorNumber) {
    case 0:
    case dialogCancelled:
        return;
    case runtime::FileNotFound:
    case runtime::DatabaseFileNotFound:
    case runtime::DiskOrNetworkError:
    case notAValidPath:
        return reportNoAccess(text);
    // The error ObjectNotSet (91) is handled like a locked store: the program shows the same
    // message and ends.
    case runtime::ObjectNotSet:
    case runtime::Locked:
    case lockedByUser:
    case tableLocked:
        return reportLocked(text);
    default:
        show(text);
    }
}

} // namespace store
