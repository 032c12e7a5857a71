#pragma once

#include "shop/explanations.h"
#include "shop/shop_plan.h"

#include <QList>
#include <QStringList>

#include <variant>

namespace shop {

/// The contents of the documents.
struct ShopPack
{
    Pieces pieces;
    std::vector<GroupPlan> groups;
    std::vector<OrderHead> orders = {};
    std::vector<ExplainedLine> explanations = {};
};

/// A cell of a table: a text, a whole number, or a decimal number.
using Cell = std::variant<QString, int, double>;

/// The rows of a document, independent of its file format.
struct Table
{
    QStringList columns;
    std::vector<std::vector<Cell>> rows;
};

/// Returns one row for each piece. The settings determine the angles.
Table piecesTable(const std::vector<Piece>& pieces, const SettingsByGroup& settings);
/// Returns one row for each length of a group.
Table cutListTable(const ShopPack& pack);
/// Returns one row for each planned piece, bar after bar.
Table barPlanTable(const ShopPack& pack);
/// Returns one row for each size, kind and colour of panes or panels.
Table panesTable(const std::vector<Pane>& panes);
/// Returns one row for each size with an explanation.
Table explanationsTable(const std::vector<ExplainedLine>& lines);

} // namespace shop
