#pragma once

#include <QString>

namespace controls {

/// A column of a grid.
struct DBGridColumn
{
    QString caption;
    QString field;
    /// Relative width of a shown column; 0 hides it (the column exists all the same).
    int width = 0;
    /// Digits behind the decimal sign of a number, as "0.00" has 2; -1 for the general conversion.
    int decimals = -1;
};

} // namespace controls
