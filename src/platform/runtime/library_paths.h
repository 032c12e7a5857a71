#pragma once

#include <QByteArrayView>
#include <QString>

namespace runtime {

/// Restricts the folders from which Qt loads plugins. Must be called before a QCoreApplication is
/// created, because creating a QGuiApplication already loads the first plugin.
///
/// By default Qt also searches the program's folder. If this folder contains the store, all
/// stations can write to the folder, so a plugin in the folder would run with the rights of every
/// other user. After the call, Qt loads plugins only from these folders, in this order: the folders
/// in QT_PLUGIN_PATH, which the user sets; the folder `plugins` in the program's folder if it is
/// trusted; and the plugin folder of the Qt libraries in use. Qt never reads a file qt.conf in the
/// program's folder, because the program has the built-in resource :/qt/etc/qt.conf.
void useTrustedLibraryPaths();

/// Returns true if only the administrator and the current user can change the folder, its contents
/// and its parent folders. On Windows, returns true for a folder in the program's folder, because
/// Windows loads libraries from the program's folder in any case.
bool isTrustedFolder(const QString& folder);

/// Returns true if file systems of this type enforce the permissions that they report. Other types,
/// such as FAT and SMB, report permissions that are made up.
bool keepsPermissions(QByteArrayView fileSystem);

} // namespace runtime
