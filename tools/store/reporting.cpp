#include "tools/store/reporting.h"

#include "tools/store/language.h"
#include "tools/store/place.h"

using namespace Qt::StringLiterals;

namespace storetools {

const QString forceOption = u"--force"_s;

bool isForced(const Call& call)
{
    return call.options.contains(forceOption);
}

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

bool isLeft(const QString& place, const Call& call, QTextStream& err)
{
    if (isForced(call))
        return true;
    const QStringList stations = Place(place).stations();
    for (const QString& each : stations)
        err << "connected: " << each << '\n';
    if (!stations.isEmpty())
        err << inUsersLanguage(u"zomrel-store: close the program on all stations first, or use "
                               "--force; nothing was changed\n"_s,
                               u"zomrel-store: צא מזומרל בכל העמדות, או הוסף --force; דבר לא "
                               "שונה\n"_s);
    return stations.isEmpty();
}

Counts::Counts(QTextStream& out) : out_(out)
{
    line(u"table"_s, u"rows"_s);
}

void Counts::line(const QString& table, const QString& rows)
{
    constexpr int nameWidth = 14;
    constexpr int numberWidth = 8;
    out_ << table.leftJustified(nameWidth) << rows.rightJustified(numberWidth) << '\n';
}

} // namespace storetools
