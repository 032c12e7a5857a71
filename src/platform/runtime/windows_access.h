#pragma once

// Only source files that are compiled for Windows may include this header.

#include <memory>

#include <windows.h>

namespace runtime {

struct LocalFree
{
    void operator()(void* memory) const { ::LocalFree(memory); }
};
template <typename Type>
using LocalMemory = std::unique_ptr<Type, LocalFree>;

/// The access rights of a new file or folder: full access for the user of this process, for
/// administrators and for the system, and no access for others.
class OnlyOwnerAccess
{
public:
    OnlyOwnerAccess();

    /// Returns the access rights for creating a file or folder, or nullptr if the user of this
    /// process cannot be determined. With nullptr, a new file or folder inherits the access rights
    /// of its folder.
    SECURITY_ATTRIBUTES* attributes() { return descriptor_ ? &attributes_ : nullptr; }

private:
    LocalMemory<void> descriptor_;
    SECURITY_ATTRIBUTES attributes_ = {sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
};

} // namespace runtime
