#include "tools/store/history.h"

#include "platform/dao/database.h"
#include "platform/dao/server_reports.h"
#include "tools/store/place.h"

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

const QString storeOption = u"--store"_s;

int orderIn(const QString& text)
{
    bool isNumber = false;
    const int order = text.toInt(&isNumber);
    if (!isNumber)
        throw WrongCall(say({u"'%1' is no order number", u"'%1' אינו מספר הזמנה"}, text));
    return order;
}

/// Returns the name of an action in the user's language. `logged` is the action in the log of
/// changes: "added", "changed" or "deleted".
QString actionOf(const QString& logged)
{
    for (const Text& each :
         {Text{u"added", u"נוסף"}, Text{u"changed", u"שונה"}, Text{u"deleted", u"נמחק"}}) {
        if (QStringView(each.english()) == logged)
            return say(each);
    }
    return isolated(logged);
}

ExitStatus printHistory(const Call& call, QTextStream& out, QTextStream&)
{
    const int order = orderIn(call.arguments.first());
    const Place place(call.options.value(storeOption, defaultStore()));
    const std::vector<dao::LoggedChange> changes = dao::changesOfOrder(*place.open(), order);
    for (const dao::LoggedChange& each : changes) {
        QStringList parts{isolated(each.moment), isolated(each.who), actionOf(each.action),
                          isolated(each.table), isolated(each.key)};
        if (!each.oldRow.isEmpty())
            parts.append(say({u"before: %1", u"לפני כן: %1"}, each.oldRow));
        out << parts.join(u"  "_s) << '\n';
    }
    if (changes.empty())
        out << say({u"no changes of order %1 are logged", u"ביומן אין שינויים בהזמנה %1"}, order)
            << '\n';
    return Success;
}

} // namespace

Command historyCommand()
{
    return {u"history"_s,
            {u"ORDER"_s},
            {u"print who changed an order and its lines, and when",
             u"לכתוב מי שינה הזמנה ושורות שלה, ומתי"},
            printHistory,
            {{storeOption,
              u"FILE"_s,
              {u"the store; default Aluminium.mdb in this folder",
               u"קובץ הנתונים; בלי זה {Aluminium.mdb} בתיקייה הזאת"}}}};
}

} // namespace storetools
