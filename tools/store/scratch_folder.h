#pragma once

#include <QString>

#include <memory>

namespace runtime {
class FolderMark;
}

namespace storetools {

/// Closes the store files that this process keeps open without using them. Does nothing except on
/// Windows, where an open file can be neither renamed nor removed.
void letGoOfFiles();

/// A private folder for intermediate files, inside the system's folder for temporary files. Only
/// the user can read it. The destructor removes the folder. A killed process leaves its folder
/// behind, and removeLeft() removes it.
class ScratchFolder
{
public:
    /// Creates the folder. Throws PermissionDenied (3051) if the folder cannot be created.
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    /// Removes the user's scratch folders that killed processes have left behind.
    static void removeLeft();

    QString filePath(const QString& name) const { return path_ + u'/' + name; }

private:
    QString path_;
    std::unique_ptr<runtime::FolderMark> mark_;
};

} // namespace storetools
