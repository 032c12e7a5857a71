#include "tools/store/checker.h"

#include "platform/dao/database.h"
#include "platform/dao/examination.h"
#include "platform/dao/table_copy.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/counter_check.h"
#include "tools/store/layout.h"
#include "tools/store/place.h"
#include "tools/store/row_check.h"
#include "tools/store/schema_check.h"

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

/// Returns the prefix of findings that concern the whole file or the whole database on a server.
QString whole(bool isOnServer)
{
    return isOnServer ? u"server: "_s : u"file: "_s;
}

QStringList engineCheck(dao::Database& database, bool isOnServer)
{
    QStringList findings;
    for (const QString& finding : dao::engineFindings(database))
        findings.append(whole(isOnServer) + QString(finding).replace(u'\n', u' '));
    return findings;
}

QStringList schemaAndRows(dao::Database& database)
{
    const Layout layout = layoutOf(database);
    return checkSchema(layout) + checkRows(database, layout);
}

QStringList schemaAndContents(dao::Database& database)
{
    return checkSchema(layoutOf(database)) + checkContents(database);
}

/// Returns the findings of the engine and of the function `check`. If the store cannot be opened,
/// that is a finding.
QStringList findingsOf(const Place& place, QStringList (*check)(dao::Database&))
{
    QStringList findings;
    try {
        const auto database = place.open();
        findings += engineCheck(*database, place.isOnServer());
        // Without a snapshot, a station that deletes an order during the check would seem to leave
        // lines without an order.
        if (place.isOnServer())
            dao::beginSnapshot(*database);
        findings += check(*database);
        database->Close();
    } catch (const runtime::RunTimeError& error) {
        findings.append(whole(place.isOnServer()) + error.description());
    }
    return findings;
}

} // namespace

QStringList checkMaking(dao::Database& database, bool isOnServer)
{
    return engineCheck(database, isOnServer) + checkSchema(layoutOf(database));
}

QStringList checkContents(dao::Database& database)
{
    const Layout layout = layoutOf(database);
    return checkRows(database, layout) + checkCounters(database, layout);
}

QStringList checkStore(const Place& place)
{
    return findingsOf(place, schemaAndContents);
}

QStringList checkStore(const QString& path)
{
    return checkStore(Place(path));
}

QStringList checkForCopying(const QString& path)
{
    return findingsOf(Place(path), schemaAndRows);
}

QStringList checkForCopying(dao::Database& database, bool isOnServer)
{
    return engineCheck(database, isOnServer) + schemaAndRows(database);
}

} // namespace storetools
