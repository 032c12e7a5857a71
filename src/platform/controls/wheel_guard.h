#pragma once

class QComboBox;

namespace controls {

/// Makes the mouse wheel change the selected entry of a combo box only while the combo box has the
/// focus. Otherwise the wheel scrolls the form that contains the combo box. The wheel never gives
/// the combo box the focus.
void guardFromWheel(QComboBox& list);

} // namespace controls
