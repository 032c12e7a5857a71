#pragma once

#include <atomic>

namespace shoptools {

/// While the object exists, the first interruption (SIGINT) sets a flag instead of ending the
/// program, and a second interruption ends the program. Only one object may exist at a time.
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
