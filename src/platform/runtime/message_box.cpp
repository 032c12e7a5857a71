#include "platform/runtime/message_box.h"

#include <cstdio>
#include <utility>

namespace runtime {

namespace {

MessageBoxAnswer writeToStandardError(const MessageBoxRequest& request)
{
    std::fprintf(stderr, "%s: %s\n", qUtf8Printable(request.title), qUtf8Printable(request.text));
    return vbOK;
}

MessageBoxDoor& currentDoor()
{
    static MessageBoxDoor door = writeToStandardError;
    return door;
}

} // namespace

MessageBoxDoor setMessageBoxDoor(MessageBoxDoor door)
{
    return std::exchange(currentDoor(), std::move(door));
}

MessageBoxAnswer MsgBox(const QString& text, int flags, const QString& title)
{
    return currentDoor()({text, flags, title.isEmpty() ? QStringLiteral("ProjZomrel") : title});
}

} // namespace runtime
