#include "tools/store/checker.h"

#include "platform/dao/database.h"
#include "platform/dao/examination.h"
#include "platform/dao/table_copy.h"
#include "platform/runtime/run_time_error.h"
#include "shop/bar_table.h"
#include "tools/store/advice.h"
#include "tools/store/counter_check.h"
#include "tools/store/engine_words.h"
#include "tools/store/figure_check.h"
#include "tools/store/layout.h"
#include "tools/store/place.h"
#include "tools/store/row_check.h"
#include "tools/store/schema_check.h"
#include "tools/store/shared_texts.h"
#include "tools/store/value_check.h"

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

QStringList engineCheck(dao::Database& database, bool isOnServer)
{
    QStringList findings;
    for (const QString& finding : dao::engineFindings(database))
        findings.append(ofWhole(isOnServer, ofEngine(QString(finding).replace(u'\n', u' '))));
    return findings;
}

/// Returns the findings about tables, fields, indexes, triggers and other objects that the program
/// does not create or creates differently. An incomplete identity of the store is a finding too.
QStringList foreignParts(dao::Database& database, bool isOnServer)
{
    QStringList findings = checkForeignParts(layoutOf(database));
    for (const QString& finding : dao::foreignObjects(database))
        findings.append(ofWhole(isOnServer, ofEngine(finding)));
    if (dao::hasBrokenMark(database))
        findings.append(ofWhole(isOnServer, say({u"the store's identity is incomplete",
                                                 u"הזיהוי של קובץ הנתונים אינו שלם"})));
    return findings;
}

/// Returns a finding for each row of the bar settings that the program zomrel-shop refuses. Returns
/// nothing if the structure of this table is wrong, because the check of the tables reports that.
QStringList checkBars(dao::Database& database, const Layout& layout)
{
    const store::TableSchema& bars = store::ownTables().front();
    const store::TableSchema* found = tableIn(layout, bars.name);
    if (found == nullptr || !checkSchema({*found}).filter(bars.name).isEmpty())
        return {};
    try {
        return ofEngine(shop::barTableFindings(database));
    } catch (const runtime::RunTimeError&) {
        return {}; // The check of the rows reports values that cannot be read.
    }
}

/// Checks an open store and fills `report`. `engineFindings` are the findings of the SQL engine's
/// own check.
void checkAll(dao::Database& database, bool isOnServer, const QStringList& engineFindings,
              CheckReport& report)
{
    const Layout layout = layoutOf(database);
    const QStringList schema = checkSchema(layout);
    const QStringList rows = checkRows(database, layout);
    const ValueReport values = checkValues(database, layout);
    report.preventCopying = engineFindings + schema + rows;
    report.findings = engineFindings + schema + foreignParts(database, isOnServer) + rows +
                      checkCounters(database, layout) + values.findings +
                      checkBars(database, layout);
    report.remarks = values.remarks;
}

void addFigures(dao::Database& database, CheckReport& report)
{
    const FigureReport computed = checkFigures(database);
    report.findings += computed.differences;
    report.figureFindings = computed.differences.size();
    report.remarks += computed.remarks;
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

CheckReport checkReport(const Place& place, Figures figures)
{
    CheckReport report;
    QStringList engineFindings;
    try {
        const auto database = place.open();
        engineFindings = engineCheck(*database, place.isOnServer());
        // A store on a server is checked in one snapshot. Otherwise a station that deletes an order
        // during the check could cause a false finding about lines without an order.
        if (place.isOnServer())
            dao::beginSnapshot(*database);
        checkAll(*database, place.isOnServer(), engineFindings, report);
        if (figures == Figures::Computed)
            addFigures(*database, report);
        database->Close();
    } catch (const runtime::RunTimeError& error) {
        const QString finding = ofWhole(place.isOnServer(), happened(error));
        report.nextStep = nextStep(error);
        if (report.findings.isEmpty())
            report.findings = report.preventCopying = engineFindings;
        report.findings.append(finding);
        report.preventCopying.append(finding);
    }
    return report;
}

CheckReport checkReport(dao::Database& database, bool isOnServer)
{
    CheckReport report;
    checkAll(database, isOnServer, engineCheck(database, isOnServer), report);
    return report;
}

QStringList checkStore(const Place& place)
{
    return checkReport(place, Figures::Skipped).findings;
}

QStringList checkStore(const QString& path)
{
    return checkStore(Place(path));
}

} // namespace storetools
