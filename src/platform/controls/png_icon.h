#pragma once

#include <QIcon>
#include <QStringList>

namespace controls {

/// Creates an icon from PNG files, one file per size. A file that cannot be read is skipped.
/// QIcon's own file loading queries every installed image plugin, which takes a fifth of the
/// program's start time.
QIcon pngIcon(const QStringList& files);

/// Creates an icon of one size that is sharp on the screens of the machine. Beside the file, as in
/// "print.png", are drawings in two and three times the size, "print@2x.png" and "print@3x.png".
/// Only the one for the largest scale of all screens is read.
QIcon sharpIcon(const QString& file);

} // namespace controls
