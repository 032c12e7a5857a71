#pragma once

#include "shop/pieces.h"

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>

/// Verifies bar plans. The checker shares no code with the planner. It reads the documents and
/// computes everything again.
namespace shop::checking {

/// Returns one text for each error of a plan.json that can be found without its store. Checks the
/// structure, the lengths of the pieces on each bar with kerf and trim, the rest (remainder) of
/// each bar, the counts, how often the saw's stop is set, and the lower bound of the number of
/// bars.
QStringList checkPlan(const QJsonObject& plan);

/// Returns the errors in the contents of a plan.json file: an error of parsing, or the errors that
/// checkPlan finds.
QStringList checkPlanFile(const QByteArray& file);

/// Returns the differences between a plan.json and the stored order lines. The plan must contain
/// exactly the pieces in `wanted`, each once and with its bar settings. It must also contain
/// exactly the panes of glass and the faults (reasons why pieces or panes cannot be made) in
/// `wanted`.
QStringList checkAgainst(const QJsonObject& plan, const Pieces& wanted,
                         const SettingsByGroup& settings);

/// Compares documents such as the cutting list with plan.json and with the pieces in `wanted`, and
/// returns the differences. `files` contains the documents by file name. A missing document is not
/// reported.
QStringList checkDocuments(const QMap<QString, QByteArray>& files, const QJsonObject& plan,
                           const Pieces& wanted);

/// Returns the numbers of the orders that a plan contains.
QList<int> ordersIn(const QJsonObject& plan);

} // namespace shop::checking
