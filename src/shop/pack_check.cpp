#include "shop/pack_check.h"

#include "shop/checking/plan_check.h"
#include "shop/documents.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace shop {

namespace {

/// Returns `files` with the missing CSV documents added. The workbook itself is not read. It
/// contains the same tables as the CSV documents together, so all CSV documents are checked in its
/// place.
QMap<QString, QByteArray> withTablesOfWorkbook(const ShopPack& pack,
                                               QMap<QString, QByteArray> files)
{
    for (const DocumentKind& each : documentKinds()) {
        if (each.file.endsWith(".csv"_L1) && !files.contains(each.file))
            files.insert(each.file, each.make(pack));
    }
    return files;
}

} // namespace

QStringList findingsIn(const ShopPack& pack, const SettingsByGroup& settings,
                       const QMap<QString, QByteArray>& files)
{
    const QByteArray json = planJson(pack);
    QStringList findings = checking::checkPlanFile(json);
    if (!findings.isEmpty())
        return findings;
    const QJsonObject plan = QJsonDocument::fromJson(json).object();
    return checking::checkAgainst(plan, pack.pieces, settings) +
           checking::checkDocuments(
               files.contains(u"workbook.xlsx"_s) ? withTablesOfWorkbook(pack, files) : files, plan,
               pack.pieces);
}

} // namespace shop
