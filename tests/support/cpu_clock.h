#pragma once

#include <chrono>
#include <ctime>

namespace testsupport {

/// Measures the processor time that this process takes, all its threads together. For tests of how
/// much work a call does: unlike a stopwatch it stands still while other processes run and while
/// the disk is waited for.
class CpuClock
{
public:
    std::chrono::milliseconds elapsed() const { return now() - begin_; }

private:
    static std::chrono::milliseconds now()
    {
        timespec time = {};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
    }

    std::chrono::milliseconds begin_ = now();
};

} // namespace testsupport
