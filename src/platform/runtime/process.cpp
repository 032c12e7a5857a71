#include "platform/runtime/process.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace runtime {

namespace {

void endAtOnce(int exitStatus)
{
    std::fflush(nullptr);
    std::_Exit(exitStatus);
}

EndProcessDoor& currentEnd()
{
    static EndProcessDoor door = endAtOnce;
    return door;
}

Clock& currentClock()
{
    static Clock clock = QDate::currentDate;
    return clock;
}

} // namespace

void EndProcess(int exitStatus)
{
    currentEnd()(exitStatus);
}

EndProcessDoor setEndProcessDoor(EndProcessDoor door)
{
    return std::exchange(currentEnd(), std::move(door));
}

QDate Today()
{
    return currentClock()();
}

Clock setClock(Clock clock)
{
    return std::exchange(currentClock(), std::move(clock));
}

} // namespace runtime
