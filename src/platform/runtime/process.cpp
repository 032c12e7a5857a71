#include "platform/runtime/process.h"

#include <cstdio>
#include <cstdlib>

namespace runtime {

namespace {

void endAtOnce(int exitStatus)
{
    std::fflush(nullptr);
    std::_Exit(exitStatus);
}

} // namespace

EndProcessDoor& endProcessDoor()
{
    static EndProcessDoor door(endAtOnce);
    return door;
}

void EndProcess(int exitStatus)
{
    endProcessDoor()(exitStatus);
}

ClockDoor& clockDoor()
{
    static ClockDoor door(QDate::currentDate);
    return door;
}

QDate Today()
{
    return clockDoor()();
}

} // namespace runtime
