#pragma once

#include "shop/shop_plan.h"

#include <QStringList>

namespace shop {

/// A row of the cutting list: all pieces with the same length in a group of pieces.
struct CutListRow
{
    GroupKey group;
    double length = 0;
    int count = 0;
    double total = 0;     ///< Without floating-point noise.
    QStringList lines;    ///< As "order-line", without duplicates.
    bool isClose = false; ///< True if the next longer or shorter length differs by less than 0.3.
};

/// Returns the rows of the cutting list by group of pieces, and within a group longest first.
std::vector<CutListRow> cutList(const std::vector<GroupPlan>& groups);

/// A row of the glass list or mesh list: all panes of glass, or panels of mesh, of the same size,
/// kind and colour.
struct PaneRow
{
    double width = 0;
    double height = 0;
    qint64 count = 0; ///< A sum over many lines may exceed an int.
    QString kind;
    QString colour;
    double area = 0; ///< width * height * count / 10000, without floating-point noise.
    QStringList lines;
};

/// Returns the rows of the glass list or mesh list, sorted by kind and colour, and then by
/// descending width and height.
std::vector<PaneRow> paneList(const std::vector<Pane>& panes);

} // namespace shop
