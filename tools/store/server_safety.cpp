#include "tools/store/server_safety.h"

#include "platform/dao/database.h"
#include "platform/dao/server_reports.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/place.h"

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

QStringList asLines(const QStringList& texts)
{
    QStringList lines;
    for (const QString& each : texts)
        lines.append(u"server: "_s + each);
    return lines;
}

} // namespace

Safety safetyOf(const Place& place)
{
    if (!place.isOnServer())
        return {};
    try {
        const dao::Durability found = dao::durabilityOf(*place.open());
        return {asLines(found.hazards), asLines(found.remarks)};
    } catch (const RunTimeError&) {
        return {}; // the command itself reports that the store cannot be opened
    }
}

void requireDurable(dao::Database& database)
{
    const QStringList hazards = dao::durabilityOf(database).hazards;
    if (!hazards.isEmpty())
        throw RunTimeError(runtime::InvalidOperation,
                           u"The server of %1 is not safe for a store: %2. The option --force uses "
                           "it nevertheless."_s.arg(database.place(), hazards.join(u"; "_s)));
}

} // namespace storetools
