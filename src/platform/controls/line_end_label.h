#pragma once

class QLabel;

namespace controls {

/// Makes a label of plain text show each carriage return in it as a line end, which the toolkit
/// draws as a blank. The label's text stays as it is. Does nothing where the text has none.
void breakAtLineEnds(QLabel& label);

} // namespace controls
