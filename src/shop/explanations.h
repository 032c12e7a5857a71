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

/// A stored size with the formula that it follows from. A line with a size that does not follow
/// from today's series has a Hebrew sentence instead.
struct ExplainedSize
{
    Part part = Part::Frame;
    Side side = Side::Width;
    double length = 0;
    QString explanation;
};

/// The sizes of one stored line.
struct ExplainedLine
{
    int order = 0;
    int line = 0;
    QString series;
    double width = 0; ///< The opening.
    double height = 0;
    std::vector<ExplainedSize> sizes; ///< By part, widths before heights.
};

/// Explains the stored line in the current row from the series of the catalogue. Parts that are not
/// made and sizes that are 0 are left out. A size that does not follow from the line has the
/// explanation "אין הסבר" (no explanation). The explanation of a part's width also tells how the
/// number of its pieces follows from the series, and that of a slat the number of slats if it
/// follows from their stored thickness.
ExplainedLine explain(dao::Recordset& line, const std::vector<calculation::NamedSeries>& catalogue);

} // namespace shop
