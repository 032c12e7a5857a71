#pragma once

#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

/// The lines whose figures do not follow from their series.
struct FigureReport
{
    /// One line for each differing figure, with the stored and the computed value. Either the
    /// series was changed after the line was added, or a value is damaged; a person has to decide.
    QStringList differences;
    /// One line for each series name that lines have and no series has any more.
    QStringList remarks;
};

/// Computes all lines again from their openings and the series of their name. If several series
/// have that name, a line has to follow from one of them. Throws the errors of reading the store.
FigureReport checkFigures(dao::Database& database);

} // namespace storetools
