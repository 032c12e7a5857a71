#include "store/file_manager.h"

#include <QDir>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace store {

namespace {

void startDetached()
{
#ifdef Q_OS_WIN
    QProcess::startDetached(qEnvironmentVariable("SystemRoot") + u"\\explorer.exe"_s, {});
#elif defined(Q_OS_MACOS)
    QProcess::startDetached(u"open"_s, {QDir::homePath()});
#else
    QProcess::startDetached(u"xdg-open"_s, {QDir::homePath()});
#endif
}

} // namespace

void startFileManager()
{
    fileManagerDoor()();
}

FileManagerDoor& fileManagerDoor()
{
    static FileManagerDoor door(startDetached);
    return door;
}

} // namespace store
