#include "platform/runtime/library_paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QStorageInfo>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>

#ifdef Q_OS_UNIX
#include <unistd.h>
#elif defined(Q_OS_WIN)
#include <windows.h>
#endif

using namespace Qt::StringLiterals;

namespace runtime {

namespace {

namespace fs = std::filesystem;

constexpr auto pluginPathVariable = "QT_PLUGIN_PATH";

/// Returns the canonical path of the folder that contains the program, or an empty text if the
/// system does not report it. QCoreApplication::applicationDirPath() cannot be used, because no
/// application object exists yet.
QString programFolder()
{
#ifdef Q_OS_LINUX
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (!error)
        return QDir(QString::fromStdU16String(program.parent_path().u16string())).canonicalPath();
#elif defined(Q_OS_WIN)
    constexpr std::size_t longestPath = 32768;
    std::wstring program(longestPath, L'\0');
    program.resize(::GetModuleFileNameW(nullptr, program.data(), DWORD(program.size())));
    const QString path = QString::fromStdWString(program);
    return path.isEmpty() ? path : QFileInfo(path).canonicalPath();
#endif
    return {};
}

#ifdef Q_OS_UNIX

/// Returns true if a user other than the current one and the administrator can write to the file or
/// folder. Members of its group count as other users. Its access control list is not read, because
/// no entry of the list permits more than the group's permission bits.
bool isWritableByOthers(const QFileInfo& file)
{
    const bool ours = file.ownerId() == 0 || file.ownerId() == ::geteuid();
    return !ours || file.permission(QFile::WriteGroup) || file.permission(QFile::WriteOther);
}

/// Returns true if other users cannot replace this user's files in the folder: they cannot write to
/// the folder, or it has the sticky bit, as /tmp has.
bool keepsItsEntries(const QFileInfo& folder)
{
    std::error_code error;
    const fs::perms permissions = fs::status(folder.filesystemFilePath(), error).permissions();
    const bool sticky = !error && (permissions & fs::perms::sticky_bit) != fs::perms::none;
    return sticky || !isWritableByOthers(folder);
}

bool isOnlyOurs(const QString& folder)
{
    if (isWritableByOthers(QFileInfo(folder)))
        return false;
    QDirIterator each(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (each.hasNext()) {
        each.next();
        if (isWritableByOthers(each.fileInfo()))
            return false;
    }
    QDir parent(folder);
    while (parent.cdUp()) {
        if (!keepsItsEntries(QFileInfo(parent.path())))
            return false;
    }
    return true;
}

#endif

/// Returns Qt's plugin paths without the program's folder, for setLibraryPaths(). When the
/// application object is created, Qt adds the program's folder to the paths and then repeats the
/// removals that setLibraryPaths() has made. Only a folder that was in the paths counts as removed.
/// The function therefore first adds the program's folder to the paths through the variable
/// QT_PLUGIN_PATH.
QStringList pathsWithoutTheFolder(const QString& folder)
{
    const QByteArray before = qgetenv(pluginPathVariable);
    const QByteArray separator(1, QDir::listSeparator().toLatin1());
    qputenv(pluginPathVariable, QFile::encodeName(folder) + separator + before);
    QStringList paths = QCoreApplication::libraryPaths();
    if (before.isEmpty())
        qunsetenv(pluginPathVariable);
    else
        qputenv(pluginPathVariable, before);
    paths.removeAll(folder);
    return paths;
}

void insertBeforeToolkit(const QString& folder, QStringList& paths)
{
    const QString toolkit = QDir(QLibraryInfo::path(QLibraryInfo::PluginsPath)).canonicalPath();
#ifdef Q_OS_WIN
    // On Windows Qt expects its plugins in a folder beside the folder of its libraries. The
    // libraries are in the program's folder, so Qt would search for plugins outside of it. That
    // search path is removed.
    paths.removeAll(toolkit);
#endif
    const qsizetype place = paths.indexOf(toolkit);
    paths.insert(place < 0 ? paths.size() : place, folder);
}

} // namespace

bool keepsPermissions(QByteArrayView fileSystem)
{
    static constexpr std::array<QByteArrayView, 16> known = {
        "ext2",  "ext3",    "ext4",     "xfs",   "btrfs",    "zfs",      "f2fs", "jfs",
        "tmpfs", "overlay", "squashfs", "erofs", "bcachefs", "reiserfs", "nfs",  "nfs4"};
    return std::find(known.begin(), known.end(), fileSystem) != known.end();
}

bool isTrustedFolder(const QString& folder)
{
#ifdef Q_OS_UNIX
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    return QFileInfo(canonical).isDir() && isOnlyOurs(canonical) &&
           keepsPermissions(QStorageInfo(canonical).fileSystemType());
#else
    // A folder in the program's folder is trusted, because Windows loads libraries from the
    // program's folder in any case.
    const QFileInfo info(folder);
    return info.isDir() && QFileInfo(info.canonicalFilePath()).path() == programFolder();
#endif
}

void useTrustedLibraryPaths()
{
    const QString folder = programFolder();
    if (folder.isEmpty())
        return;
    QStringList paths = pathsWithoutTheFolder(folder);
    const QString own = folder + u"/plugins"_s;
    if (isTrustedFolder(own))
        insertBeforeToolkit(own, paths);
    else if (QFileInfo(own).isDir())
        std::fprintf(stderr, "No plugins are loaded from %s: others can write to it.\n",
                     qPrintable(own));
    QCoreApplication::setLibraryPaths(paths);
}

} // namespace runtime
