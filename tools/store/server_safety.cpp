#include "tools/store/server_safety.h"

#include "platform/dao/database.h"
#include "platform/dao/server_reports.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/engine_words.h"
#include "tools/store/place.h"
#include "tools/store/shared_texts.h"
#include "tools/store/told_error.h"

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

QStringList asLines(const QStringList& texts)
{
    QStringList lines;
    for (const QString& each : texts)
        lines.append(ofWhole(true, ofEngine(each)));
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
        throw ToldError(
            runtime::InvalidOperation,
            say({u"The server of %1 is not safe for a store: %2. The option --force uses it "
                 "nevertheless.",
                 u"השרת של %1 אינו בטוח לנתונים: %2. האפשרות {--force} משתמשת בו בכל זאת."},
                Phrase{placeInWords(database.place())}, Phrase{ofEngine(hazards).join(u"; "_s)}),
            adviceForServer());
}

QString adviceForServer()
{
    return say({u"Ask the administrator to mend the server's settings.",
                u"בקש ממנהל השרת לתקן את ההגדרות שלו."});
}

} // namespace storetools
