#pragma once

#include <QStringList>

class QWidget;

namespace testsupport {

/// Returns what is wrong with the layout of a visible form: a window outside its screen, a control
/// outside its window or its scrolling part, a text without room, or a shortened figure or header
/// in a grid.
QStringList layoutFaults(QWidget& form);

/// Presses Tab until the focus has gone round. Returns the names of the controls that were not in
/// view while they had the focus.
QStringList focusFaults(QWidget& form);

} // namespace testsupport
