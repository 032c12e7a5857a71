#pragma once

#include "shop/explanations.h"
#include "shop/pieces.h"

namespace shop {

/// The stored data that the documents are made from, all read from the same snapshot.
struct OrderSource
{
    std::vector<OrderHead> orders; ///< As given, each once.
    std::vector<OrderLine> lines;  ///< In the order of the given orders, then by line number.
    std::vector<ExplainedLine> explanations; ///< In the order of the lines, if they were read.
    SettingsByGroup settings;
};

/// Whether readOrders also explains the sizes of the lines. This needs the catalogue of series and
/// some time.
enum class Explanations { Read, Skipped };

/// Reads the lines of the orders and the settings of bars from the store at the path. An order that
/// is given twice is read once. Throws NoCurrentRecord (3021) with the number of the order if an
/// order does not exist, the errors of readBarTable, and any error of the engine.
OrderSource readOrders(const QString& path, const QList<int>& orders,
                       Explanations explanations = Explanations::Read);

} // namespace shop
