#pragma once

// For the files of this system that are compiled for Windows only.

#include <memory>

#include <windows.h>

namespace runtime {

struct LocalFree
{
    void operator()(void* memory) const { ::LocalFree(memory); }
};
template <typename Type>
using LocalMemory = std::unique_ptr<Type, LocalFree>;

/// Permits everything to the user of this process, to administrators and to the system, and nothing
/// to others.
class OnlyOwnerAccess
{
public:
    OnlyOwnerAccess();

    /// Returns null if the user cannot be found out; the folder's own access applies then.
    SECURITY_ATTRIBUTES* attributes() { return descriptor_ ? &attributes_ : nullptr; }

private:
    LocalMemory<void> descriptor_;
    SECURITY_ATTRIBUTES attributes_ = {sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
};

} // namespace runtime
