#pragma once

namespace controls {

/// Installs QMessageBox as the implementation of runtime::MsgBox. The Hebrew captions are כן for
/// Yes, לא for No, אישור for OK and ביטול for Cancel. Escape and the close box count as Cancel, as
/// No in a box without Cancel, and as OK in a box with OK only. Enter presses Yes or OK. Texts are
/// shown as plain text. The flags of MsgBox select the reading direction and the right alignment.
void installMessageBoxes();

} // namespace controls
