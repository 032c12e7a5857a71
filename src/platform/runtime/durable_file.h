#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

/// Functions that create, replace and remove files. Their results are correct even if the power
/// fails, if the process is killed, or if another user creates files in the same folder. Only
/// durable_file_posix.cpp, durable_file_windows.cpp and file_access_windows.cpp contain the system
/// calls of these functions.
namespace runtime {

/// What durableRename does if a file already has the new name.
enum class Existing { Refuse, Replace };

/// The users who may read a new file.
enum class Readers {
    AsUsual,   ///< The users that the process's settings for new files allow.
    OnlyOwner, ///< Only the user who creates the file.
};

/// Returns the path that results from following the symbolic links of the path's last component.
/// The target of a link need not exist. Throws PermissionDenied (3051) if the links form a circle.
QString followLinks(const QString& path);

/// Writes the entries of the folder to the disk, so that a power failure does not undo an earlier
/// creation, renaming or removal of a file in it. Throws DiskOrNetworkError (3043).
void syncFolder(const QString& folder);

/// Writes the open file to the disk, renames it within its folder and writes the folder to the
/// disk. At every moment the new name belongs to the complete previous file, to the complete new
/// file or, if there was no previous file, to no file. There is one exception on Windows. If the
/// previous file is open and is not on a local NTFS disk, it has for a moment the name with the
/// ending ".zomrel-previous", and no file has the new name. On Windows the file must have been
/// created by createFile. Throws DatabaseExists (3204) if the new name exists and `existing` is
/// Refuse. Throws DiskFull (3026), DiskOrNetworkError (3043) or PermissionDenied (3051) if the file
/// cannot be written or renamed.
void durableRename(QFile& file, const QString& path, const QString& newPath, Existing existing);

enum class Linked {
    Done,
    NameExists,
    NotPermitted, ///< The file system has no second names for a file, or does not permit this one.
};
/// Gives a file a second name (a hard link) in the same folder and writes the folder to the disk.
/// Throws DiskOrNetworkError (3043).
Linked durableLink(const QString& path, const QString& secondName);

/// Renames a file within its folder to a name that no other file has, and writes the folder to the
/// disk. Throws the errors of durableRename.
void durableMove(const QString& path, const QString& newPath);

/// Creates a new file, opens it for reading and writing, and marks it with a lock as used by this
/// process. The QFile object does not contain the file name. Returns false if a file or a symbolic
/// link already has the name. Throws PermissionDenied (3051) or another error if the file cannot be
/// created.
bool createFile(QFile& file, const QString& path, Readers readers);

/// Creates a file without a name in the folder, opens it for reading and writing, and marks it with
/// a lock as used by this process. The system removes the file if the process is killed. Returns
/// false if the file system does not support files without a name.
bool createUnnamedFile(QFile& file, const QString& folder, Readers readers);
/// Gives the name `path` to a nameless file that createUnnamedFile created in the same folder.
/// Returns false if another file has the name. Throws the errors of durableRename.
bool nameFile(QFile& file, const QString& path);
/// Renames a file within its folder and replaces the file that has the new name. The file and the
/// folder are not forced to the disk. Throws the errors of durableRename.
void replaceFile(const QString& path, const QString& newPath);
/// Forces the data of an open file to the disk. Throws DiskFull (3026) or DiskOrNetworkError
/// (3043).
void syncFile(QFile& file, const QString& path);

/// Opens a file for reading. Other programs may rename or remove the file while it is open. Returns
/// false if the file cannot be opened. The QFile object does not contain the file name.
bool openForReading(QFile& file, const QString& path);

/// Creates a folder to which only the current user has access. Returns false if the name already
/// exists. Throws PermissionDenied (3051) or another error if the folder cannot be created.
bool createFolder(const QString& path);

/// The functions mayReadFolder and mayWriteInFolder return whether this process may list the folder
/// and whether it may create files in the folder.
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

    /// Returns false if another process had already marked the folder as used or removed it.
    bool isValid() const { return descriptor_ != -1; }
    /// Removes the folder and everything in it.
    void removeFolder();

private:
    void release();

    QString folder_;
    qintptr descriptor_; ///< Descriptor or handle; -1 if the folder is not marked.
};

/// Removes a file or folder that a process marked with createFile or FolderMark and did not remove
/// before the process ended. Does nothing if that process is still running or if the file system
/// cannot mark files. Except on Windows, also does nothing if another user owns the file or folder.
void removeIfLeft(const QString& path);

/// The owner, the group and the permissions of a file. On Windows only the access control list is
/// used.
struct FileAccess
{
    unsigned owner = 0;
    unsigned group = 0;
    unsigned mode = 0;
    QByteArray list; ///< The access control list; empty if there is none.
};
/// Returns owner, group and permissions of an existing file. Throws PermissionDenied (3051).
FileAccess accessOf(const QString& path);

/// Gives an open file the owner, group and permissions in `access`. Returns false if the process or
/// the file system does not permit that. If the group or the access control list cannot be set, the
/// file's group gets only the permissions that everybody has.
bool keepAccess(QFile& file, const FileAccess& access);

/// Gives an open file the group of `source` and at most the permissions in `source`, without those
/// that the process's umask forbids. So a user who cannot read the source file cannot read the open
/// file either. Does nothing on a file system without permissions.
void limitAccess(QFile& file, const FileAccess& source);

} // namespace runtime
