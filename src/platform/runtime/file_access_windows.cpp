#include "platform/runtime/durable_file.h"
#include "platform/runtime/windows_access.h"
#include "platform/runtime/windows_handle.h"

#include <aclapi.h>
#include <array>
#include <sddl.h>
#include <string>

namespace runtime {

namespace {

/// Returns the security identifier of the user who runs this process, as a text, or an empty text
/// if Windows does not report it.
std::wstring userId()
{
    HANDLE opened = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened))
        return {};
    const WindowsHandle token(opened);
    alignas(TOKEN_USER) std::array<char, 256> user{};
    DWORD length = 0;
    wchar_t* text = nullptr;
    if (!GetTokenInformation(token.get(), TokenUser, user.data(), DWORD(user.size()), &length) ||
        !ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER*>(user.data())->User.Sid, &text))
        return {};
    return LocalMemory<wchar_t>(text).get();
}

/// Returns true if the file system has access control lists.
bool keepsAccess(HANDLE file)
{
    DWORD flags = 0;
    return GetVolumeInformationByHandleW(file, nullptr, 0, nullptr, nullptr, &flags, nullptr, 0) &&
           (flags & FILE_PERSISTENT_ACLS) != 0;
}

/// Makes the file inherit the access rights of its folder, as files of other programs do.
bool inheritAccess(HANDLE file)
{
    ACL none = {};
    return InitializeAcl(&none, sizeof none, ACL_REVISION) &&
           SetSecurityInfo(file, SE_FILE_OBJECT,
                           DACL_SECURITY_INFORMATION | UNPROTECTED_DACL_SECURITY_INFORMATION,
                           nullptr, nullptr, &none, nullptr) == ERROR_SUCCESS;
}

} // namespace

OnlyOwnerAccess::OnlyOwnerAccess()
{
    const std::wstring user = userId();
    if (user.empty())
        return;
    const std::wstring text = L"D:P(A;OICI;FA;;;" + user + L")(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)";
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ConvertStringSecurityDescriptorToSecurityDescriptorW(text.c_str(), SDDL_REVISION_1, &descriptor,
                                                         nullptr);
    descriptor_.reset(descriptor);
    attributes_.lpSecurityDescriptor = descriptor;
}

/// Returns only the access control list of the file, because on Windows the members `owner`,
/// `group` and `mode` of FileAccess are not used. The list is empty on a file system without access
/// control lists.
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
