#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

/// Functions that create, replace and remove files. The result is correct after a power failure,
/// after the process was killed, and if another user puts files into the same folder. The
/// system calls that they need are only in durable_file_posix.cpp, durable_file_windows.cpp and
/// file_access_windows.cpp.
namespace runtime {

/// What durableRename does if a file already has the new name.
enum class Existing { Refuse, Replace };

/// Who may read a new file.
enum class Readers {
    AsUsual,   ///< The users that the process's settings for new files allow.
    OnlyOwner, ///< Only the user who creates the file.
};

/// Returns the path with symbolic links of the last component followed, also if the file that a
/// link names does not exist. Throws PermissionDenied (3051) for a circle of links.
QString followLinks(const QString& path);

/// Writes the entries of the folder to the disk, so that a power failure does not undo an earlier
/// creation, renaming or removal of a file in it. Throws DiskOrNetworkError (3043).
void syncFolder(const QString& folder);

/// Writes a file, which is open, to the disk, gives it a new name in the same folder and writes the
/// folder to the disk. At every moment the new name belongs to nothing, to the complete previous
/// file, or to the complete new file. If a file is replaced, the name always belongs to one of the
/// two, except on Windows if the previous file is open and is not on a local NTFS disk: the name
/// then belongs to nothing for a moment, and the previous file has the name with
/// ".zomrel-previous". On Windows the file must come from createFile. Throws DatabaseExists (3204)
/// if the new name exists and is not to be replaced, and DiskFull (3026), DiskOrNetworkError (3043)
/// or PermissionDenied (3051).
void durableRename(QFile& file, const QString& path, const QString& newPath, Existing existing);

enum class Linked {
    Done,
    NameExists,
    NotPermitted, ///< The file system has no second names for a file, or does not permit this one.
};
/// Gives a file a second name in the same folder and writes the folder to the disk. Throws
/// DiskOrNetworkError (3043).
Linked durableLink(const QString& path, const QString& secondName);

/// Moves a file to a name that is free. Throws as durableRename does.
void durableMove(const QString& path, const QString& newPath);

/// Creates a new file, opens it for reading and writing, and marks it as used by this process. The
/// QFile object has no file name. Returns false if the name is taken, also by a symbolic link.
/// Throws PermissionDenied (3051) or another error if the file cannot be created.
bool createFile(QFile& file, const QString& path, Readers readers);

/// Like createFile for a file without a name, which a killed process cannot leave behind. Returns
/// false if the file system has no such files.
bool createUnnamedFile(QFile& file, const QString& folder, Readers readers);
/// Gives a file of createUnnamedFile this name in the same folder. Returns false if the name is
/// taken. Throws as durableRename does.
bool nameFile(QFile& file, const QString& path);
/// Gives a file a new name in the same folder and replaces the file that has the name. The file and
/// its folder are not written to the disk. Throws as durableRename does.
void replaceFile(const QString& path, const QString& newPath);
/// Forces the data of an open file to the disk. Throws DiskFull (3026) or DiskOrNetworkError
/// (3043).
void syncFile(QFile& file, const QString& path);

/// Opens a file for reading. Other programs may rename or remove it meanwhile. Returns false if the
/// file cannot be opened. The QFile object has no file name.
bool openForReading(QFile& file, const QString& path);

/// Creates a folder that only the user can enter. Returns false if the name is taken. Throws
/// PermissionDenied (3051) or another error if the folder cannot be created.
bool createFolder(const QString& path);

/// Return whether this process may list a folder and whether it may create files in it.
bool mayReadFolder(const QString& folder);
bool mayWriteInFolder(const QString& folder);

/// Marks a folder as used by this process for the lifetime of the object.
class FolderMark
{
public:
    explicit FolderMark(const QString& folder);
    ~FolderMark();
    FolderMark(const FolderMark&) = delete;
    FolderMark& operator=(const FolderMark&) = delete;

    /// Returns false if another process has marked or removed the folder.
    bool isValid() const { return descriptor_ != -1; }
    /// Removes the folder and everything in it.
    void removeFolder();

private:
    void release();

    QString folder_;
    qintptr descriptor_; ///< Descriptor or handle; -1 if the folder is not marked.
};

/// Removes a file or folder that a process marked by createFile or FolderMark and left behind when
/// it ended. Does nothing if that process is still running, if the file system cannot mark files,
/// or, except on Windows, if another user owns the file or folder.
void removeIfLeft(const QString& path);

/// The owner, the group and the permissions of a file. On Windows only the list is used.
struct FileAccess
{
    unsigned owner = 0;
    unsigned group = 0;
    unsigned mode = 0;
    QByteArray list; ///< The access control list; empty if there is none.
};
/// Returns owner, group and permissions of an existing file. Throws PermissionDenied (3051).
FileAccess accessOf(const QString& path);

/// Gives an open file the same owner, group and permissions. Returns false if the process or the
/// file system does not permit that. Without the group, the file's group may do only what everybody
/// may.
bool keepAccess(QFile& file, const FileAccess& access);

/// Gives an open file the group and the permissions of its source, without those that the process's
/// settings for new files forbid. Nobody can read the file who cannot read the source. Does nothing
/// on a file system without permissions.
void limitAccess(QFile& file, const FileAccess& source);

} // namespace runtime
