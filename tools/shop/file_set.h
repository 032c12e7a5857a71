#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

namespace shoptools {

/// Checks that files can be written into the folder, and creates nothing. Throws PermissionDenied
/// (3051), with the name of the folder, if the folder is not writable or not readable, or if it is
/// missing and cannot be created.
void requireWritable(const QString& folder);

/// Writes files into a folder, by file name. Creates the folder if it is missing. First writes the
/// contents of all files to the disk as files without a name. Then gives each file its name and
/// replaces an existing file of that name.
///
/// If the process is killed, each file is either unchanged or complete, and never partly written. A
/// file with a random name may then remain, but only on a file system that does not support files
/// without a name, or if an existing file was just being replaced. The next call removes such a
/// file. If two processes write into the same folder, the second one waits for the first one.
///
/// Throws PermissionDenied (3051), DiskFull (3026) or DiskOrNetworkError (3043). If the contents of
/// one file cannot be written, no file is replaced.
void writeFiles(const QString& folder, const QMap<QString, QByteArray>& files);

} // namespace shoptools
