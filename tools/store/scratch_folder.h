#pragma once

#include <QString>

#include <memory>

namespace runtime {
class FolderMark;
}

namespace storetools {

/// Closes the stores that this process keeps open for later use, on a system where an open file can
/// be neither renamed nor removed.
void letGoOfFiles();

/// A folder for intermediate files in the folder for temporary files. Only the user can read it.
/// The destructor removes it. A process that is killed leaves the folder; removeLeft removes it.
class ScratchFolder
{
public:
    /// Throws PermissionDenied (3051) if the folder cannot be created.
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    /// Removes the user's folders whose processes have ended.
    static void removeLeft();

    QString filePath(const QString& name) const { return path_ + u'/' + name; }

private:
    QString path_;
    std::unique_ptr<runtime::FolderMark> mark_;
};

} // namespace storetools
