#pragma once

#include "shop/pieces.h"

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>

/// Verifies bar plans. The checker shares no code with the planner: it reads the documents and
/// computes everything again.
namespace shop::checking {

/// Returns the errors of a plan.json that can be found without its store, one text each: structure,
/// lengths of each bar with kerf and trim, rests, counts, stop settings, and the bound.
QStringList checkPlan(const QJsonObject& plan);

/// Parses and checks the bytes of a plan.json.
QStringList checkPlanFile(const QByteArray& file);

/// Returns the differences between a plan.json and the stored lines. The plan must contain every
/// piece once and no other, the settings of the bars, every pane of glass, and every fault of the
/// lines.
QStringList checkAgainst(const QJsonObject& plan, const Pieces& wanted,
                         const SettingsByGroup& settings);

/// Returns the differences between the other documents, given by file name, and plan.json with the
/// pieces. A missing document is no difference.
QStringList checkDocuments(const QMap<QString, QByteArray>& files, const QJsonObject& plan,
                           const Pieces& wanted);

/// Returns the numbers of the orders that a plan contains.
QList<int> ordersIn(const QJsonObject& plan);

} // namespace shop::checking
