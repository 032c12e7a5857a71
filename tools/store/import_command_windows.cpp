// The library that reads the old format exists for Linux only.

#include "tools/store/import_command.h"

#include "tools/store/language.h"

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

ExitStatus refuse(const Call& call, QTextStream&, QTextStream& err)
{
    err << inUsersLanguage(
               u"zomrel-store: the Windows program cannot read stores of the old format; nothing "
               "was imported.\n"
               "zomrel-store: Install Zomrel on a Linux computer, for example the portable folder, "
               "and copy %1 there.\n"
               "zomrel-store: Run there: zomrel-store import OLD.mdb Aluminium.mdb\n"
               "zomrel-store: Then copy Aluminium.mdb into the folder of the Windows program.\n"_s,
               u"zomrel-store: התוכנית לחלונות אינה קוראת קובצי נתונים בתבנית הישנה; דבר לא "
               "יובא.\n"
               "zomrel-store: התקן את זומרל במחשב לינוקס, למשל מהתיקייה הניידת, והעתק לשם את %1.\n"
               "zomrel-store: הרץ שם: zomrel-store import OLD.mdb Aluminium.mdb\n"
               "zomrel-store: אחר כך העתק את Aluminium.mdb אל תיקיית התוכנית בחלונות.\n"_s)
               .arg(call.arguments.first());
    return Failure;
}

} // namespace

Command importCommand()
{
    return {u"import"_s,
            {u"OLD.mdb"_s, u"TO"_s},
            u"tell how an old-format store is imported on Linux"_s,
            refuse};
}

ExitStatus readOldFile(const QString&)
{
    return Failure;
}

} // namespace storetools
