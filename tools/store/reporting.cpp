#include "tools/store/reporting.h"

#include "tools/store/language.h"

using namespace Qt::StringLiterals;

namespace storetools {

void print(QTextStream& stream, const QStringList& lines)
{
    for (const QString& line : lines)
        stream << line << '\n';
}

ExitStatus notSound(const QStringList& findings, QTextStream& err)
{
    print(err, findings);
    err << inUsersLanguage(u"zomrel-store: the store is not sound; nothing was changed\n"_s,
                           u"zomrel-store: בסיס הנתונים אינו תקין; דבר לא שונה\n"_s);
    return Failure;
}

} // namespace storetools
