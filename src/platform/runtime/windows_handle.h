#pragma once

// Only source files that are compiled for Windows may include this header.

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <string>
#include <utility>

#include <windows.h>

namespace runtime {

/// The sharing mode that permits other programs to read, write, rename and remove a file while it
/// is open.
constexpr DWORD everySharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Owns a Windows handle and closes it in the destructor.
class WindowsHandle
{
public:
    explicit WindowsHandle(HANDLE handle) : handle_(handle) {}
    ~WindowsHandle()
    {
        if (isValid())
            CloseHandle(handle_);
    }
    WindowsHandle(const WindowsHandle&) = delete;
    WindowsHandle& operator=(const WindowsHandle&) = delete;

    bool isValid() const { return handle_ != INVALID_HANDLE_VALUE && handle_ != nullptr; }
    HANDLE get() const { return handle_; }
    HANDLE release() { return std::exchange(handle_, INVALID_HANDLE_VALUE); }

private:
    HANDLE handle_;
};

/// Throws the run-time error that corresponds to an error number of Windows. The comments in
/// durable_file.h list these run-time errors.
[[noreturn]] void raise(const QString& path, DWORD error);

/// Returns the Windows handle of an open file. The QFile object closes the handle.
HANDLE handleOf(QFile& file);

/// Returns the absolute path in the form that the Windows functions accept for paths longer than
/// 260 characters.
inline std::wstring wideName(const QString& path)
{
    using namespace Qt::StringLiterals;
    const QString absolute = QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
    if (!absolute.startsWith(u"\\\\"_s))
        return (u"\\\\?\\"_s + absolute).toStdWString();
    if (absolute.startsWith(u"\\\\?"_s) || absolute.startsWith(u"\\\\."_s))
        return absolute.toStdWString();
    return (u"\\\\?\\UNC"_s + absolute.mid(1)).toStdWString();
}

} // namespace runtime
