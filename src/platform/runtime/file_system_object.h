#pragma once

#include <QString>

namespace runtime {

/// The few file questions that the program asks of the system.
class FileSystemObject
{
public:
    /// True for an existing file; a folder is none.
    bool FileExists(const QString& path) const;
};

} // namespace runtime
