#pragma once

#include <QIcon>

namespace controls {

/// Returns a yellow triangle with an exclamation mark. The program draws this sign itself, because
/// the desktop's icon theme may replace Qt's own warning sign.
QIcon warningSign();

} // namespace controls
