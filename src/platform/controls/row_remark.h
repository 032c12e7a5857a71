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
    /// Returns a remark about a row, or an empty text. It is called while the grid is painted: it
    /// must be fast, read only the row and the rows within reach, and not throw. The grid keeps the
    /// remark until a row changes.
    std::function<QString(const dao::RecordsetPages& rows, int row)> text;
    /// Number of rows above and below a row that the remark reads. They are loaded first.
    int reach = 0;
};

} // namespace controls
