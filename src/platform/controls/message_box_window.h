#pragma once

namespace controls {

/// Puts QMessageBox behind runtime::MsgBox. Yes and No read כן and לא, OK אישור, Cancel ביטול;
/// Escape and the close box count as No (as Cancel or OK where the box has no No); Enter presses
/// Yes. Texts are plain; right-to-left and right alignment follow the flags.
void installMessageBoxes();

} // namespace controls
