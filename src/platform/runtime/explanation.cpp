#include "platform/runtime/explanation.h"

namespace runtime {

ExplanationDoor& explanationDoor()
{
    static ExplanationDoor door([](const RunTimeError&) { return QString(); });
    return door;
}

} // namespace runtime
