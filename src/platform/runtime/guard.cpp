#include "platform/runtime/guard.h"

#include "platform/runtime/explanation.h"
#include "platform/runtime/message_box.h"

#include <QStringList>

#include <cstdio>

namespace runtime {

namespace {

bool ending = false;

/// Sets the flag `ending` while the error box is open. The destructor resets the flag, because in a
/// test the process continues after the box.
struct EndingScope
{
    EndingScope() { ending = true; }
    ~EndingScope() { ending = false; }
    EndingScope(const EndingScope&) = delete;
    EndingScope& operator=(const EndingScope&) = delete;
};

/// Returns the names of the object and of the objects that contain it, for example
/// "FrOrder/OpeningPanel/CmdAdd". Objects without a name are left out.
QString pathOf(const QObject* object)
{
    QStringList names;
    for (; object != nullptr; object = object->parent()) {
        if (!object->objectName().isEmpty())
            names.prepend(object->objectName());
    }
    return names.isEmpty() ? QStringLiteral("an unnamed object") : names.join(u'/');
}

/// Writes the error to stderr, because users often report an error by its number alone and the
/// other details help to find the cause.
void log(const RunTimeError& error, const QObject* sender)
{
    std::fprintf(stderr, "Run-time error %d in %s: %s\n", error.number(),
                 qUtf8Printable(pathOf(sender)), qUtf8Printable(error.description()));
}

} // namespace

bool isEnding()
{
    return ending;
}

void endWithRunTimeBox(const RunTimeError& error, const QObject* sender)
{
    log(error, sender);
    const EndingScope scope;
    MessageBoxRequest box;
    box.text =
        QStringLiteral("Run-time error '%1':\n\n%2").arg(error.number()).arg(error.description());
    box.flags = vbCritical;
    box.title = projectName();
    box.explanation = explanationDoor()(error);
    messageBoxDoor()(box);
    EndProcess(1);
}

} // namespace runtime
