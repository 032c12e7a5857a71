#include "tools/store/checker.h"

#include "platform/dao/database.h"
#include "platform/dao/examination.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/row_check.h"
#include "tools/store/schema_check.h"

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

QStringList engineCheck(dao::Database& database)
{
    QStringList findings;
    for (const QString& finding : dao::engineFindings(database))
        findings.append(u"file: "_s + QString(finding).replace(u'\n', u' '));
    return findings;
}

} // namespace

QStringList checkStore(const QString& path)
{
    QStringList findings;
    try {
        const auto database = dao::DBEngine::instance().OpenDatabase(path);
        findings += engineCheck(*database);
        const Layout layout = layoutOf(*database);
        findings += checkSchema(layout) + checkRows(*database, layout);
        database->Close();
    } catch (const runtime::RunTimeError& error) {
        findings.append(u"file: "_s + error.description());
    }
    return findings;
}

} // namespace storetools
