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
    /// while the grid is painted. Therefore the function must be fast and must not throw. It may
    /// read only the row itself, `reach` rows above it and `reach` rows below it. The grid keeps
    /// the remark until a row changes.
    std::function<QString(const dao::RecordsetPages& rows, int row)> text;
    /// The number of rows above a row, and the number of rows below it, that the function `text`
    /// may read. The grid loads these rows before it calls `text`.
    int reach = 0;
};

} // namespace controls
