#pragma once

#include <QIcon>
#include <QStringList>

namespace controls {

/// Creates an icon from PNG files, one file per size. A file that cannot be read is skipped. This
/// function exists because QIcon's own file loading queries every installed image plugin, which
/// takes a fifth of the program's start time.
QIcon pngIcon(const QStringList& files);

/// Creates an icon of one size that is sharp on all screens of the computer. For a file such as
/// "print.png", the same folder contains drawings of two and three times the size, "print@2x.png"
/// and "print@3x.png". Only the drawing for the largest scale factor of all screens is loaded.
QIcon sharpIcon(const QString& file);

} // namespace controls
