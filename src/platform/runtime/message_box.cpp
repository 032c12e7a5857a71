#include "platform/runtime/message_box.h"

#include <cstdio>

namespace runtime {

namespace {

MessageBoxAnswer writeToStandardError(const MessageBoxRequest& request)
{
    std::fprintf(stderr, "%s: %s\n", qUtf8Printable(request.title), qUtf8Printable(request.text));
    return vbOK;
}

} // namespace

MessageBoxDoor& messageBoxDoor()
{
    static MessageBoxDoor door(writeToStandardError);
    return door;
}

QString projectName()
{
    return QStringLiteral("ProjZomrel");
}

MessageBoxAnswer MsgBox(const QString& text, int flags, const QString& title)
{
    return messageBoxDoor()({text, flags, title.isEmpty() ? projectName() : title});
}

} // namespace runtime
