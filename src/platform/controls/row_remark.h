#pragma once

#include <QString>

#include <functional>

namespace dao {
class RecordsetPages;
}

namespace controls {

/// Returns a remark about a row, which is loaded, or an empty text. It is called while the grid is
/// painted: it must be fast, read only rows that are loaded, and not throw.
using RowRemark = std::function<QString(const dao::RecordsetPages& rows, int row)>;

} // namespace controls
