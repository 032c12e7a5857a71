#pragma once

#include "calculation/cuts.h"

namespace dao {
class Recordset;
}

namespace calculation {

/// Reads the deductions and the number of sashes from the current row of the table Serials. A Null
/// becomes an empty value. Throws NoCurrentRecord (3021) if there is no current row.
cuts::Series readSeries(dao::Recordset& series);

} // namespace calculation
