#include "shop/pack_check.h"

#include "shop/checking/plan_check.h"
#include "shop/documents.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace shop {

QStringList findingsIn(const ShopPack& pack, const SettingsByGroup& settings,
                       const QMap<QString, QByteArray>& files)
{
    const QByteArray json = planJson(pack);
    const QStringList findings = checking::checkPlanFile(json);
    if (!findings.isEmpty())
        return findings;
    const QJsonObject plan = QJsonDocument::fromJson(json).object();
    return checking::checkAgainst(plan, pack.pieces, settings) +
           checking::checkDocuments(files, plan, pack.pieces);
}

} // namespace shop
