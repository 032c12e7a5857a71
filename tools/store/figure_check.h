#pragma once

#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

/// The result of comparing the stored figures of all order lines, such as their cut sizes, with the
/// figures computed from their series.
struct FigureReport
{
    /// One line for each stored figure that differs from the computed one, with both figures.
    /// Either the series was changed after the order line was added, or a number is damaged; a
    /// person has to decide which.
    QStringList differences;
    /// One line for each series name that order lines contain but that no series in the store has.
    QStringList remarks;
};

/// Computes the figures of all order lines, such as cut sizes, again and compares them with the
/// stored figures. Uses the opening of the line and the series that the line names. If several
/// series have this name, the one with the fewest differences counts. Throws the errors of reading
/// the store.
FigureReport checkFigures(dao::Database& database);

} // namespace storetools
