// as_standard_user COMMAND...: runs a program without the rights of an administrator, and ends with
// its exit code.

#include <windows.h>

#include <string>

namespace {

/// Returns this process's token without membership in the group of the administrators.
HANDLE standardToken()
{
    HANDLE own = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_ALL_ACCESS, &own))
        return nullptr;
    BYTE memory[SECURITY_MAX_SID_SIZE];
    DWORD size = sizeof memory;
    if (!CreateWellKnownSid(WinBuiltinAdministratorsSid, nullptr, memory, &size))
        return nullptr;
    SID_AND_ATTRIBUTES administrators = {memory, 0};
    HANDLE standard = nullptr;
    return CreateRestrictedToken(own, 0, 1, &administrators, 0, nullptr, 0, nullptr, &standard)
               ? standard
               : nullptr;
}

/// Returns the command line after this program's own name, which contains no quotation mark.
std::wstring commandLine()
{
    const std::wstring whole = GetCommandLineW();
    const std::size_t end = whole.find(whole.front() == L'"' ? L'"' : L' ', 1);
    return whole.substr(whole.find_first_not_of(L' ', end + 1));
}

} // namespace

int main()
{
    constexpr int failure = 100;
    const HANDLE token = standardToken();
    if (token == nullptr)
        return failure;
    std::wstring command = commandLine();
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessAsUserW(token, nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                              nullptr, &start, &process))
        return failure;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = failure;
    GetExitCodeProcess(process.hProcess, &status);
    return int(status);
}
