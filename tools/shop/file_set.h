#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

namespace shoptools {

/// Throws PermissionDenied (3051) with the name of the folder if files cannot be written there, or
/// if the folder is missing and cannot be created. Creates nothing.
void requireWritable(const QString& folder);

/// Writes files, given by name, into a folder and creates the folder if it is missing. First all
/// files are written to the disk without a name; then each replaces the previous file of its name.
/// A killed process leaves every file as it was or as it should be, never partly written, and no
/// other file. Only where the file system has no files without a name, or in the instant in which
/// an existing file is replaced, it may leave a file with a random name, which the next call
/// removes. Two processes write into the same folder one after the other.
///
/// Throws PermissionDenied (3051), DiskFull (3026) or DiskOrNetworkError (3043). If the contents of
/// a file cannot be written, none is replaced.
void writeFiles(const QString& folder, const QMap<QString, QByteArray>& files);

} // namespace shoptools
