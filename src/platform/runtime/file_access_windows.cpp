#include "platform/runtime/durable_file.h"
#include "platform/runtime/windows_handle.h"

#include <aclapi.h>

namespace runtime {

namespace {

/// Returns true if the file system has access control lists.
bool keepsAccess(HANDLE file)
{
    DWORD flags = 0;
    return GetVolumeInformationByHandleW(file, nullptr, 0, nullptr, nullptr, &flags, nullptr, 0) &&
           (flags & FILE_PERSISTENT_ACLS) != 0;
}

/// Lets the access of the folder apply to the file, as it does to files of other programs.
bool inheritAccess(HANDLE file)
{
    ACL none = {};
    return InitializeAcl(&none, sizeof none, ACL_REVISION) &&
           SetSecurityInfo(file, SE_FILE_OBJECT,
                           DACL_SECURITY_INFORMATION | UNPROTECTED_DACL_SECURITY_INFORMATION,
                           nullptr, nullptr, &none, nullptr) == ERROR_SUCCESS;
}

} // namespace

/// Only the access control list is used. It is empty on a file system without such lists.
FileAccess accessOf(const QString& path)
{
    const WindowsHandle opened(CreateFileW(wideName(path).c_str(), READ_CONTROL, everySharing,
                                           nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                                           nullptr));
    if (!opened.isValid())
        raise(path, GetLastError());
    FileAccess access;
    DWORD length = 0;
    GetKernelObjectSecurity(opened.get(), DACL_SECURITY_INFORMATION, nullptr, 0, &length);
    if (!keepsAccess(opened.get()) || length == 0)
        return access;
    access.list.resize(qsizetype(length));
    if (!GetKernelObjectSecurity(opened.get(), DACL_SECURITY_INFORMATION, access.list.data(),
                                 length, &length))
        access.list.clear();
    return access;
}

bool keepAccess(QFile& file, const FileAccess& access)
{
    if (access.list.isEmpty())
        return inheritAccess(handleOf(file));
    QByteArray list = access.list;
    return SetKernelObjectSecurity(handleOf(file), DACL_SECURITY_INFORMATION, list.data()) != 0;
}

void limitAccess(QFile& file, const FileAccess& source)
{
    keepAccess(file, source);
}

} // namespace runtime
