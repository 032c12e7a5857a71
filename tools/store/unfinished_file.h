#pragma once

#include "platform/runtime/durable_file.h"

namespace storetools {

/// Returns the prefix of the random names that unfinished files have.
QString unfinishedPrefix();
/// Removes the unfinished files that killed processes have left in the folder.
void removeLeftFiles(const QString& folder);

/// A file under construction in the folder of its final path. The file has a random name until
/// putInPlace() is called. The destructor deletes a file that has not been put in place. A killed
/// process leaves its file behind; the next UnfinishedFile in the same folder removes that file.
class UnfinishedFile
{
public:
    /// Creates the file. Throws PermissionDenied (3051) if the folder is missing or not writable.
    UnfinishedFile(const QString& path, runtime::Readers readers);
    ~UnfinishedFile();
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    /// Appends the contents of another file or device. Throws DiskFull (3026) or DiskOrNetworkError
    /// (3043) if writing fails.
    void fill(QIODevice& source);
    void fill(const QString& sourcePath);
    /// Returns the open file, so that the caller can set its owner, group and permissions.
    QFile& file() { return file_; }
    /// Writes the file to the disk, renames it to its final path and writes the folder to the disk.
    /// Throws the errors of runtime::durableRename.
    void putInPlace(runtime::Existing existing);

private:
    QString finalPath_;
    QString path_; ///< The path until the file is put in place.
    QFile file_;
    bool isFinished_ = false;
};

} // namespace storetools
