#pragma once

class QApplication;

namespace shell {

/// Gives the application its style, its right-to-left direction, its icon, its fonts and the
/// toolkit's own texts in Hebrew.
void setUpAppearance(QApplication& application);

} // namespace shell
