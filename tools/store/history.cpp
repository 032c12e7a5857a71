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
        throw WrongCall(u"'%1' is no order number"_s.arg(text));
    return order;
}

ExitStatus printHistory(const Call& call, QTextStream& out, QTextStream&)
{
    const int order = orderIn(call.arguments.first());
    const Place place(call.options.value(storeOption, defaultStore()));
    const std::vector<dao::LoggedChange> changes = dao::changesOfOrder(*place.open(), order);
    for (const dao::LoggedChange& each : changes) {
        QStringList parts{each.moment, each.who, each.action, each.table, each.key};
        if (!each.oldRow.isEmpty())
            parts.append(u"before: "_s + each.oldRow);
        out << parts.join(u"  "_s) << '\n';
    }
    if (changes.empty())
        out << "no changes of order " << order << " are logged\n";
    return Success;
}

} // namespace

Command historyCommand()
{
    return {u"history"_s,
            {u"ORDER"_s},
            u"print who changed an order and its lines, and when"_s,
            printHistory,
            {{storeOption, u"FILE"_s, u"the store; default Aluminium.mdb in this folder"_s}}};
}

} // namespace storetools
