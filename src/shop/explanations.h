#pragma once

#include "shop/bar_settings.h"

#include <QString>

#include <vector>

namespace dao {
class Recordset;
}

namespace calculation {
struct NamedSeries;
}

namespace shop {

/// A stored size and its explanation: the formula that gives the size. If the series of the line
/// now gives another size, a Hebrew sentence after the formula says that the series was changed. If
/// the series was deleted or gives no such size, the explanation is a Hebrew sentence alone.
struct ExplainedSize
{
    Part part = Part::Frame;
    Side side = Side::Width;
    double length = 0;
    QString explanation;
};

/// The sizes of one stored order line, each with its explanation.
struct ExplainedLine
{
    int order = 0;
    int line = 0;
    QString series;
    double width = 0; ///< The opening.
    double height = 0;
    std::vector<ExplainedSize> sizes; ///< By part, widths before heights.
};

/// Explains the sizes of the order line in the current row with the series of the catalogue. Parts
/// that are not made and sizes that are 0 are left out. A size that cannot be explained has the
/// explanation "אין הסבר" (no explanation). The explanation of a part's width also contains the
/// computation of the number of pieces. For slats, this computation is left out if it does not give
/// the stored number of slats.
ExplainedLine explain(dao::Recordset& line, const std::vector<calculation::NamedSeries>& catalogue);

} // namespace shop
