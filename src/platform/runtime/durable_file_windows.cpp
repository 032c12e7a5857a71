// Windows renames or removes an open file only if every program that has the file open permits it.
// The functions in this source file open files with this permission. SQLite as built for Zomrel
// does the same.

#include "platform/runtime/durable_file.h"

#include "platform/runtime/run_time_error.h"
#include "platform/runtime/windows_access.h"
#include "platform/runtime/windows_handle.h"

#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <array>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace runtime {

using namespace Qt::StringLiterals;

namespace {

/// The name of the file that marks its folder as used while a process has the file open.
const QString folderMark = u".zomrel-in-use"_s;

/// Marks a file as used: locks one byte far behind the end of any real file. Returns false if
/// another process has locked the byte or if the file system has no locks.
bool mark(HANDLE file)
{
    OVERLAPPED place = {};
    place.OffsetHigh = 0x7fffffff;
    return LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) !=
           0;
}

/// Returns true for the system errors that occur if another program has the file open.
bool mayPass(DWORD error)
{
    return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
}

/// Renames a file. Virus scanners open new files for a moment, so the renaming is repeated if
/// access is denied. Returns 0 or the system's error number.
DWORD moved(const QString& path, const QString& newPath, DWORD flags)
{
    constexpr int trials = 20;
    constexpr unsigned long pause = 50; // Milliseconds.
    for (int trial = 1;; ++trial) {
        if (MoveFileExW(wideName(path).c_str(), wideName(newPath).c_str(),
                        flags | MOVEFILE_WRITE_THROUGH))
            return 0;
        const DWORD error = GetLastError();
        if (!mayPass(error) || trial == trials)
            return error;
        QThread::msleep(pause);
    }
}

/// Declares the structure FILE_RENAME_INFO with flags and the number of its information class,
/// because the compiler's headers contain only the older structure without flags.
struct RenameRequest
{
    DWORD flags;
    HANDLE folder;
    DWORD nameBytes;
    wchar_t name[1];
};
constexpr auto renameWithFlags = FILE_INFO_BY_HANDLE_CLASS(22);
constexpr DWORD replaceExisting = 1;
constexpr DWORD evenIfOpen = 2;

/// Gives an open file the name of another file, which it replaces. The replaced file then has no
/// name, but programs that have it open can still use it. Returns false if the replacement fails,
/// for example because only local file systems of Windows 10 and newer support it.
bool takeName(HANDLE file, const QString& newPath)
{
    const std::wstring name = wideName(newPath);
    const std::size_t nameBytes = name.size() * sizeof(wchar_t);
    std::vector<std::byte> memory(sizeof(RenameRequest) + nameBytes);
    auto* const request = new (memory.data())
        RenameRequest{replaceExisting | evenIfOpen, nullptr, DWORD(nameBytes), {}};
    std::memcpy(request->name, name.data(), nameBytes);
    return SetFileInformationByHandle(file, renameWithFlags, request, DWORD(memory.size())) != 0;
}

/// Replaces a file that programs have open. That file is renamed first, so for a moment no file has
/// the name newPath.
DWORD replacedInTwoSteps(const QString& path, const QString& newPath)
{
    const QString previous = newPath + u".zomrel-previous"_s;
    SetFileAttributesW(wideName(newPath).c_str(),
                       FILE_ATTRIBUTE_NORMAL); // Or it cannot be removed.
    DeleteFileW(wideName(previous).c_str());
    if (const DWORD error = moved(newPath, previous, 0))
        return error;
    if (const DWORD error = moved(path, newPath, 0)) {
        moved(previous, newPath, 0);
        return error;
    }
    DeleteFileW(wideName(previous).c_str());
    return 0;
}

DWORD replaced(QFile& file, const QString& path, const QString& newPath)
{
    if (takeName(handleOf(file), newPath)) {
        FlushFileBuffers(handleOf(file)); // Writes the name.
        return 0;
    }
    if (MoveFileExW(wideName(path).c_str(), wideName(newPath).c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return 0;
    const DWORD error = GetLastError();
    return mayPass(error) ? replacedInTwoSteps(path, newPath) : error;
}

HANDLE createdFile(const QString& path, DWORD access, SECURITY_ATTRIBUTES* attributes)
{
    return CreateFileW(wideName(path).c_str(), access, everySharing, attributes, CREATE_NEW,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

/// Creates a file. On a network share, users often may write files but not set their access rights.
/// There the file is created with the access rights of its folder.
HANDLE createdFile(const QString& path, Readers readers)
{
    constexpr DWORD access = GENERIC_READ | GENERIC_WRITE | DELETE;
    OnlyOwnerAccess onlyOwner;
    const HANDLE created = createdFile(
        path, access | WRITE_DAC, readers == Readers::OnlyOwner ? onlyOwner.attributes() : nullptr);
    const bool isRefused = created == INVALID_HANDLE_VALUE && GetLastError() == ERROR_ACCESS_DENIED;
    return isRefused ? createdFile(path, access, nullptr) : created;
}

HANDLE openedFolder(const QString& folder, DWORD access)
{
    return CreateFileW(wideName(folder).c_str(), access, everySharing, nullptr, OPEN_EXISTING,
                       FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

bool mayOpenFolder(const QString& folder, DWORD access)
{
    return WindowsHandle(openedFolder(folder, access)).isValid();
}

} // namespace

void raise(const QString& path, DWORD error)
{
    const QString reason = qt_error_string(int(error));
    switch (error) {
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS:
        throw RunTimeError(DatabaseExists, u"Database '%1' already exists."_s.arg(path));
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        throw RunTimeError(DiskFull, u"Could not write '%1': %2"_s.arg(path, reason));
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_DIRECTORY:
    case ERROR_CANT_RESOLVE_FILENAME:
        throw RunTimeError(PermissionDenied, u"Could not write '%1': %2"_s.arg(path, reason));
    default:
        throw RunTimeError(DiskOrNetworkError, u"Could not write '%1': %2"_s.arg(path, reason));
    }
}

HANDLE handleOf(QFile& file)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(file.handle()));
}

QString followLinks(const QString& path)
{
    constexpr int mostLinks = 40;
    QString place = path;
    for (int followed = 0; followed < mostLinks; ++followed) {
        const QFileInfo info(place);
        if (!info.isSymbolicLink())
            return place;
        place = info.symLinkTarget();
    }
    raise(path, ERROR_CANT_RESOLVE_FILENAME);
}

void syncFolder(const QString& folder)
{
    const WindowsHandle opened(openedFolder(folder, GENERIC_WRITE));
    // Errors of opening and flushing the folder are ignored. The functions that rename a file have
    // already written the new name to the disk, and most network file systems cannot flush a
    // folder.
    if (opened.isValid())
        FlushFileBuffers(opened.get());
}

void syncFile(QFile& file, const QString& path)
{
    if (!file.flush() || !FlushFileBuffers(handleOf(file)))
        raise(path, GetLastError());
}

void replaceFile(const QString& path, const QString& newPath)
{
    if (const DWORD error = moved(path, newPath, MOVEFILE_REPLACE_EXISTING))
        raise(newPath, error);
}

void durableRename(QFile& file, const QString& path, const QString& newPath, Existing existing)
{
    syncFile(file, path);
    const DWORD error =
        existing == Existing::Replace ? replaced(file, path, newPath) : moved(path, newPath, 0);
    if (error != 0)
        raise(newPath, error);
    syncFolder(QFileInfo(newPath).absolutePath());
}

Linked durableLink(const QString& path, const QString& secondName)
{
    if (!CreateHardLinkW(wideName(secondName).c_str(), wideName(path).c_str(), nullptr))
        return GetLastError() == ERROR_ALREADY_EXISTS ? Linked::NameExists : Linked::NotPermitted;
    syncFolder(QFileInfo(secondName).absolutePath());
    return Linked::Done;
}

void durableMove(const QString& path, const QString& newPath)
{
    if (const DWORD error = moved(path, newPath, 0))
        raise(newPath, error);
    syncFolder(QFileInfo(newPath).absolutePath());
}

/// Windows has no files without a name.
bool createUnnamedFile(QFile&, const QString&, Readers)
{
    return false;
}

bool nameFile(QFile&, const QString& path)
{
    raise(path, ERROR_NOT_SUPPORTED);
}

bool createFile(QFile& file, const QString& path, Readers readers)
{
    WindowsHandle created(createdFile(path, readers));
    if (!created.isValid()) {
        const DWORD error = GetLastError();
        if (error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS)
            return false;
        raise(path, error);
    }
    if (!mark(created.get()) && GetLastError() == ERROR_LOCK_VIOLATION)
        return false;
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(created.get()),
                                           _O_RDWR | _O_BINARY | _O_NOINHERIT);
    if (descriptor < 0)
        raise(path, ERROR_TOO_MANY_OPEN_FILES);
    created.release(); // The descriptor closes it.
    if (!file.open(descriptor, QIODevice::ReadWrite, QFileDevice::AutoCloseHandle))
        raise(path, ERROR_OPEN_FAILED);
    return true;
}

bool openForReading(QFile& file, const QString& path)
{
    WindowsHandle opened(CreateFileW(wideName(path).c_str(), GENERIC_READ, everySharing, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!opened.isValid())
        return false;
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(opened.get()),
                                           _O_RDONLY | _O_BINARY | _O_NOINHERIT);
    if (descriptor < 0)
        return false;
    opened.release(); // The descriptor closes it.
    return file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
}

bool createFolder(const QString& path)
{
    OnlyOwnerAccess onlyOwner;
    if (CreateDirectoryW(wideName(path).c_str(), onlyOwner.attributes()))
        return true;
    const DWORD error = GetLastError();
    if (error != ERROR_ALREADY_EXISTS)
        raise(path, error);
    return false;
}

bool mayReadFolder(const QString& folder)
{
    return mayOpenFolder(folder, FILE_LIST_DIRECTORY);
}

bool mayWriteInFolder(const QString& folder)
{
    return mayOpenFolder(folder, FILE_ADD_FILE);
}

FolderMark::FolderMark(const QString& folder)
    : folder_(folder),
      descriptor_(reinterpret_cast<qintptr>(CreateFileW(
          wideName(folder + u'/' + folderMark).c_str(), GENERIC_READ | DELETE, 0, nullptr,
          OPEN_ALWAYS, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr)))
{
}

void FolderMark::release()
{
    if (isValid())
        CloseHandle(reinterpret_cast<HANDLE>(std::exchange(descriptor_, -1)));
}

FolderMark::~FolderMark()
{
    release();
}

void FolderMark::removeFolder()
{
    release();
    QDir(folder_).removeRecursively();
}

void removeIfLeft(const QString& path)
{
    const DWORD attributes = GetFileAttributesW(wideName(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        return;
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        FolderMark folder(path);
        if (folder.isValid())
            folder.removeFolder();
        return;
    }
    const WindowsHandle opened(CreateFileW(wideName(path).c_str(), GENERIC_READ | DELETE,
                                           everySharing, nullptr, OPEN_EXISTING,
                                           FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!opened.isValid() || !mark(opened.get()))
        return;
    FILE_DISPOSITION_INFO removal = {TRUE};
    SetFileInformationByHandle(opened.get(), FileDispositionInfo, &removal, sizeof removal);
}

} // namespace runtime
