#include "platform/runtime/guard.h"

#include "platform/runtime/message_box.h"

namespace runtime {

namespace {

bool ending = false;

/// Holds the flag for as long as the box stands, so that a test which replaced the end can go on.
struct EndingScope
{
    EndingScope() { ending = true; }
    ~EndingScope() { ending = false; }
    EndingScope(const EndingScope&) = delete;
    EndingScope& operator=(const EndingScope&) = delete;
};

} // namespace

bool isEnding()
{
    return ending;
}

void endWithRunTimeBox(const RunTimeError& error)
{
    const EndingScope scope;
    MsgBox(
        QStringLiteral("Run-time error '%1':\n\n%2").arg(error.number()).arg(error.description()),
        vbCritical);
    EndProcess(1);
}

} // namespace runtime
