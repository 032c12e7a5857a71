// This file replaces import_command.cpp on Windows, because the library that reads the old format
// exists for Linux only.

#include "tools/store/import_command.h"

#include "tools/store/reporting.h"

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

ExitStatus tellHowToImport(const Call& call, QTextStream&, QTextStream& err)
{
    tell(err, say({u"the Windows program cannot read stores of the old format; nothing was "
                   "imported.",
                   u"התוכנית לחלונות אינה קוראת קבצים ישנים; לא יובא דבר."}));
    tell(err, say({u"Install Zomrel on a Linux computer, for example the portable folder, and copy "
                   "%1 there.",
                   u"התקן את זומרל במחשב לינוקס, למשל מהתיקייה הניידת, והעתק לשם את %1."},
                  call.arguments.first()));
    tell(err,
         say({u"Run there: %1", u"הרץ שם: %1"}, u"zomrel-store import OLD.mdb Aluminium.mdb"_s));
    tell(err,
         say({u"Then copy Aluminium.mdb over the store of the Windows program. It is beside the "
              "program, or in C:\\ProgramData\\Zomrel after an installation for all users.",
              u"אחר כך העתק את {Aluminium.mdb} במקום קובץ הנתונים של התוכנית בחלונות. הוא נמצא ליד "
              "התוכנית, ואחרי התקנה לכל המשתמשים הוא נמצא ב-{C:\\ProgramData\\Zomrel}."}));
    return Failure;
}

} // namespace

Command importCommand()
{
    return {u"import"_s,
            {u"OLD.mdb"_s, u"TO"_s},
            {u"tell how an old-format store is imported on Linux",
             u"להסביר איך מייבאים קובץ ישן בלינוקס"},
            tellHowToImport};
}

ExitStatus readOldFile(const QString&)
{
    return Failure;
}

} // namespace storetools
