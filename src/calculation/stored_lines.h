#pragma once

#include "calculation/explained_cuts.h"

#include <QString>

#include <vector>

namespace dao {
class Database;
class Recordset;
} // namespace dao

namespace calculation {

/// A series of the catalogue.
struct NamedSeries
{
    QString name;
    cuts::TodaysSeries series;
};

/// Returns all series in the order of the table Serials.
std::vector<NamedSeries> readCatalogue(dao::Database& database);

/// Returns the sizes and counts of the stored line in the current row. A Null becomes 0.
cuts::ComputedLine readLine(dao::Recordset& line);

/// Returns the first series of this name that yields the cut sizes of the line. If no series of
/// this name yields them, returns the first series of this name. Returns nullptr if the catalogue
/// has no series of this name.
const cuts::TodaysSeries* seriesOf(const cuts::ComputedLine& line, const QString& name,
                                   const std::vector<NamedSeries>& catalogue);

} // namespace calculation
