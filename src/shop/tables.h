#pragma once

#include "shop/explanations.h"
#include "shop/shop_plan.h"

#include <QList>
#include <QStringList>

#include <variant>

namespace shop {

/// The shop pack: the contents of all its documents.
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

/// Returns a table with one row for each piece. The angle of a piece is the angle in the settings
/// of its group.
Table piecesTable(const std::vector<Piece>& pieces, const SettingsByGroup& settings);
/// Returns the table of the cutting list, with one row for each length of a group.
Table cutListTable(const ShopPack& pack);
/// Returns the table of the bar plan, with one row for each planned piece, bar after bar.
Table barPlanTable(const ShopPack& pack);
/// Returns the table of the glass list or mesh list, with one row for each size, kind and colour.
Table panesTable(const std::vector<Pane>& panes);
/// Returns a table with one row for each size of the order lines and its explanation.
Table explanationsTable(const std::vector<ExplainedLine>& lines);

} // namespace shop
