#include "store/file_manager.h"

#include <QDir>
#include <QProcess>

#include <utility>

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

FileManagerDoor& currentDoor()
{
    static FileManagerDoor door = startDetached;
    return door;
}

} // namespace

void startFileManager()
{
    currentDoor()();
}

FileManagerDoor setFileManagerDoor(FileManagerDoor door)
{
    return std::exchange(currentDoor(), std::move(door));
}

} // namespace store
