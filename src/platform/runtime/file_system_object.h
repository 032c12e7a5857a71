#pragma once

#include <QString>

namespace runtime {

/// Queries about files on the disk.
class FileSystemObject
{
public:
    /// Returns true if the path is an existing file. A folder is not a file.
    bool FileExists(const QString& path) const;
};

} // namespace runtime
