#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

namespace shoptools {

/// Writes files, given by name, into a folder and creates the folder if it is missing. First all
/// files are written under random names; then each replaces the previous file of its name. A killed
/// process leaves every file as it was or as it should be, never partly written. Two processes
/// write into the same folder one after the other.
///
/// Throws PermissionDenied (3051), DiskFull (3026) or DiskOrNetworkError (3043). If a file cannot
/// be written, none is replaced.
void writeFiles(const QString& folder, const QMap<QString, QByteArray>& files);

} // namespace shoptools
