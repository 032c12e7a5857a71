#pragma once

#include <QByteArrayView>
#include <QString>

namespace runtime {

/// Restricts the folders from which Qt loads plugins. To be called before a QCoreApplication is
/// created, since creating a QGuiApplication already loads the first plugin.
///
/// By default Qt also searches the program's folder. All stations can write to it if it contains
/// the store, so a plugin there would run as every other user. After the call, plugins are loaded
/// from these folders only, in this order: the folders in QT_PLUGIN_PATH, which the user sets; the
/// folder `plugins` beside the program if it is trusted; and the folder of the Qt libraries in use.
/// A qt.conf beside the program is never read, because :/qt/etc/qt.conf is built in.
void useTrustedLibraryPaths();

/// Returns true if only the administrator and the current user can change the folder, anything in
/// it, or one of its parents. On Windows, returns true for the folders in the program's folder,
/// whose libraries Windows loads as well.
bool isTrustedFolder(const QString& folder);

/// Returns true if permissions on a file system of this type are enforced by the system that keeps
/// the files. Others, such as FAT or SMB, report permissions that are made up.
bool keepsPermissions(QByteArrayView fileSystem);

} // namespace runtime
