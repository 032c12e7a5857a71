#pragma once

#include <chrono>
#include <ctime>

namespace testsupport {

/// Measures the processor time of all threads of this process. Tests use it to measure how much
/// work a call does. Unlike elapsed time, processor time does not grow while other processes run or
/// while the process waits for the disk.
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
