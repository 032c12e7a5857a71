#pragma once

#include <QString>

namespace controls {

/// A column of a grid.
struct DBGridColumn
{
    QString caption;
    QString field;
    /// Relative width of the column; 0 hides the column.
    int width = 0;
    /// Number of decimal places of a number. If it is -1, runtime::toText formats the number.
    int decimals = -1;
};

} // namespace controls
