#include "platform/runtime/guard.h"

#include "platform/runtime/message_box.h"

namespace runtime {

namespace {

bool ending = false;

/// Sets the flag `ending` while the error box is open, and resets it for tests that continue
/// afterwards.
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
