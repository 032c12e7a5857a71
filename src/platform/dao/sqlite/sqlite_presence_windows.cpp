#include "platform/dao/sqlite/sqlite_presence.h"

#include "platform/runtime/windows_handle.h"

namespace dao::sqlite {

using namespace Qt::StringLiterals;
using runtime::WindowsHandle;

namespace {

/// The byte that shows the presence of a process. It is the same byte as in
/// sqlite_presence_posix.cpp, so that stations on different systems detect each other.
constexpr DWORD presenceByte = 0x40000000 + 1024;

/// Opens the file. Other programs can still read, write, rename and remove the file.
HANDLE opened(const QString& path, DWORD access)
{
    return CreateFileW(runtime::wideName(path).c_str(), access, runtime::everySharing, nullptr,
                       OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool lock(HANDLE file, DWORD kind)
{
    OVERLAPPED place = {};
    place.Offset = presenceByte;
    return LockFileEx(file, kind | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) != 0;
}

} // namespace

QString fileIdentityOf(const QString& path)
{
    const WindowsHandle file(opened(path, FILE_READ_ATTRIBUTES));
    BY_HANDLE_FILE_INFORMATION known = {};
    if (!file.isValid() || !GetFileInformationByHandle(file.get(), &known))
        return {};
    const quint64 index = quint64{known.nFileIndexHigh} << 32U | known.nFileIndexLow;
    return u"%1:%2"_s.arg(known.dwVolumeSerialNumber).arg(index);
}

Presence::Presence(const QString& path)
    : descriptor_(reinterpret_cast<qintptr>(opened(path, GENERIC_READ)))
{
    if (descriptor_ == -1)
        return;
    // A program that looks for connected stations locks the presence byte of the file for a moment.
    // This program therefore tries several times to lock the byte.
    constexpr int trials = 20;
    constexpr DWORD pause = 5; // Milliseconds.
    for (int trial = 0; trial < trials; ++trial) {
        if (lock(reinterpret_cast<HANDLE>(descriptor_), 0))
            return;
        Sleep(pause);
    }
}

Presence::~Presence()
{
    if (descriptor_ != -1)
        CloseHandle(reinterpret_cast<HANDLE>(descriptor_));
}

QStringList processesPresentAt(const QString& path)
{
    const WindowsHandle file(opened(path, GENERIC_READ));
    if (!file.isValid() || lock(file.get(), LOCKFILE_EXCLUSIVE_LOCK) ||
        GetLastError() != ERROR_LOCK_VIOLATION)
        return {};
    return {u"a program on this or another computer"_s};
}

} // namespace dao::sqlite
