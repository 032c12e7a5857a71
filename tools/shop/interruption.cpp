#include "tools/shop/interruption.h"

#include <csignal>

namespace shoptools {

namespace {

std::atomic<bool> isInterrupted = false;
// The flag that the signal handler sets has to be lock-free, because a signal handler may only use
// lock-free atomic objects.
static_assert(std::atomic<bool>::is_always_lock_free);

extern "C" void interrupt(int signal)
{
    isInterrupted = true;
    std::signal(signal, SIG_DFL);
}

} // namespace

Interruption::Interruption() : former_(std::signal(SIGINT, interrupt))
{
    if (former_ == SIG_IGN) // The caller wants no interruption.
        std::signal(SIGINT, SIG_IGN);
}

Interruption::~Interruption()
{
    std::signal(SIGINT, former_);
}

const std::atomic<bool>& Interruption::flag() const
{
    return isInterrupted;
}

} // namespace shoptools
