#pragma once

namespace dao {
class Recordset;
}

namespace output {
class FormView;
}

namespace calculation {

/// Gives each figure of the line view a tool tip. That of a cut size shows how the size was
/// computed: opening, deduction, divisor and result. That of a count shows how it follows from the
/// number of sashes, and that of the opening says what was entered. The line is the one that
/// ComputeCuts computed last, and the series in the current row is the one that it used. The tips
/// stay empty if reading fails.
void explainComputedLine(output::FormView& view, dao::Recordset& series);

/// Does the same as explainComputedLine for the stored line in the current row of a recordset. Only
/// the line is read now. The catalogue is read when a tool tip is shown for the first time, and the
/// result is kept if it could be read. The series is looked up by name; among several of one name,
/// the one from which the line follows is taken. The tip says if the series was changed or deleted
/// since, or if the catalogue cannot be read. The tips stay empty if the line cannot be read.
void explainStoredLine(output::FormView& view, dao::Recordset& line);

} // namespace calculation
