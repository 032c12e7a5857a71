#pragma once

#include <atomic>

namespace shoptools {

/// For the lifetime of the object, the first interruption (SIGINT) sets a flag instead of ending
/// the program; the second one ends it. There may be one object at a time.
class Interruption
{
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    const std::atomic<bool>& flag() const;

private:
    void (*former_)(int);
};

} // namespace shoptools
