#include "tools/store/checker.h"

#include "platform/dao/database.h"
#include "platform/dao/examination.h"
#include "platform/dao/table_copy.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/layout.h"
#include "tools/store/place.h"
#include "tools/store/row_check.h"
#include "tools/store/schema_check.h"

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

/// What the engine finds is said of the file or of the server's database as a whole.
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

QStringList contentsCheck(dao::Database& database)
{
    return checkSchema(layoutOf(database)) + checkContents(database);
}

} // namespace

QStringList checkMaking(dao::Database& database, bool isOnServer)
{
    return engineCheck(database, isOnServer) + checkSchema(layoutOf(database));
}

QStringList checkContents(dao::Database& database)
{
    return checkRows(database, layoutOf(database));
}

QStringList checkStore(dao::Database& database, bool isOnServer)
{
    return engineCheck(database, isOnServer) + contentsCheck(database);
}

QStringList checkStore(const Place& place)
{
    QStringList findings;
    try {
        const auto database = place.open();
        findings += engineCheck(*database, place.isOnServer());
        // Stations that delete an order between two looks would leave lines without it.
        if (place.isOnServer())
            dao::holdStill(*database);
        findings += contentsCheck(*database);
        database->Close();
    } catch (const runtime::RunTimeError& error) {
        findings.append(whole(place.isOnServer()) + error.description());
    }
    return findings;
}

QStringList checkStore(const QString& path)
{
    return checkStore(Place(path));
}

} // namespace storetools
