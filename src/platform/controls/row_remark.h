#pragma once

#include <QString>

#include <functional>

namespace dao {
class RecordsetPages;
}

namespace controls {

/// How a grid remarks on its rows.
struct RowRemark
{
    /// Function that returns the remark about a row, or an empty text. The grid calls the function
    /// while the grid is painted. Therefore the function must be fast, must not throw, and may read
    /// only the rows up to `reach` rows above and below. The grid keeps the remark until a row
    /// changes.
    std::function<QString(const dao::RecordsetPages& rows, int row)> text;
    /// The number of rows above and below a row that the function reads. The grid loads these rows
    /// before it calls the function.
    int reach = 0;
};

} // namespace controls
