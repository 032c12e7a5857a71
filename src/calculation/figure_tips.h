#pragma once

namespace dao {
class Recordset;
}

namespace output {
class FormView;
}

namespace calculation {

/// Give each cut size of the line view a tool tip that shows how the size was computed: opening,
/// deduction, divisor and result. They only read, and leave the tips empty if reading fails.

/// For the line that ComputeCuts computed last, and the series that it used.
void explainComputedLine(output::FormView& view, dao::Recordset& series);
/// For the stored line in the current row. Its series is looked up by name; among several of one
/// name, the one from which the line follows. A series that was changed or deleted since is told.
void explainStoredLine(output::FormView& view, dao::Recordset& line);

} // namespace calculation
