#pragma once

#include <QIcon>

namespace controls {

/// Returns a yellow triangle with an exclamation mark. It is drawn here, because the desktop's icon
/// theme may replace the toolkit's warning sign.
QIcon warningSign();

} // namespace controls
