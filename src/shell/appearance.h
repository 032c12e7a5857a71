#pragma once

class QApplication;

namespace shell {

/// Sets the application's style, right-to-left direction, icon and fonts, and loads the Hebrew
/// translation of Qt's own texts.
void setUpAppearance(QApplication& application);

} // namespace shell
