#pragma once

#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

/// The result of comparing the stored figures of all order lines with the figures computed from
/// their series.
struct FigureReport
{
    /// One line for each figure that differs, with the stored and the computed value. Either the
    /// series was changed after the order line was added, or a value is damaged; a person has to
    /// decide which.
    QStringList differences;
    /// One line for each series name that order lines contain but that no series in the store has.
    QStringList remarks;
};

/// Computes the figures of all order lines again, from the line's opening and the series with the
/// line's series name, and compares them with the stored figures. If several series have that name,
/// the one with the fewest differences counts. Throws the errors of reading the store.
FigureReport checkFigures(dao::Database& database);

} // namespace storetools
