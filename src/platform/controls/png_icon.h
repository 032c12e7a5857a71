#pragma once

#include <QIcon>
#include <QStringList>

namespace controls {

/// An icon of PNG files, one for each size that there is of it. A file that is none adds nothing.
/// QIcon's own way of reading a file loads every image plugin of the machine to ask what the file
/// is; that took a fifth of the program's start.
QIcon pngIcon(const QStringList& files);

} // namespace controls
