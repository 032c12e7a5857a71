#pragma once

namespace dao {
class Recordset;
}

namespace output {
class FormView;
}

namespace calculation {

/// Sets a tool tip for each figure of the line view. The tool tip of a cut size shows the
/// computation: opening, deduction, divisor and result. The tool tip of a count shows the
/// computation from the number of sashes. The tool tip of the opening says that the measure was
/// entered. The line is the one that ComputeCuts computed last, and the current row of `series`
/// must be the series that ComputeCuts used. The tool tips stay empty if reading fails.
void explainComputedLine(output::FormView& view, dao::Recordset& series);

/// Sets the tool tips of the line view for the stored line in the current row of `line`. They show
/// the same computations as the tool tips of explainComputedLine.
///
/// This function reads only the line. The series are read when a tool tip is shown for the first
/// time. If reading them fails, the tool tip says so, and the next tool tip reads them again. The
/// line's series is found by its name. If several series have this name, the series that yields the
/// line's sizes is used. A tool tip says if the series has been changed or deleted after the line
/// was stored. The tool tips stay empty if the line cannot be read.
void explainStoredLine(output::FormView& view, dao::Recordset& line);

} // namespace calculation
