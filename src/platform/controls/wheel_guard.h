#pragma once

class QComboBox;

namespace controls {

/// Makes the mouse wheel change the choice of a list only while the list has the focus. Otherwise
/// the wheel scrolls the form that contains the list, and it never gives the list the focus.
void guardFromWheel(QComboBox& list);

} // namespace controls
