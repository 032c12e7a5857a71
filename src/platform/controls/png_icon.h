#pragma once

#include <QIcon>
#include <QStringList>

namespace controls {

/// Creates an icon from PNG files, one file per size. A file that cannot be read is skipped.
/// QIcon's own file loading queries every installed image plugin, which takes a fifth of the
/// program's start time.
QIcon pngIcon(const QStringList& files);

} // namespace controls
