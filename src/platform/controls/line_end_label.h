#pragma once

class QLabel;

namespace controls {

/// Makes a plain-text label show each carriage return as a line break; Qt would draw it as a blank.
/// The label's text stays unchanged. Does nothing if the text has no carriage return.
void breakAtLineEnds(QLabel& label);

} // namespace controls
