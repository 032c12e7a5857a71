#pragma once

#include <QByteArrayView>
#include <QString>

namespace runtime {

/// Restricts the folders from which Qt loads plugins. To be called before a QCoreApplication is
/// created, since creating a QGuiApplication already loads the first plugin.
///
/// Qt also searches the program's own folder, to which all stations may have to write, because it
/// may hold the store. Afterwards plugins come from these folders only, in this order: those named
/// by the user in QT_PLUGIN_PATH, the folder `plugins` beside the program if it is trusted, and the
/// folder that belongs to the Qt libraries in use. A qt.conf beside the program is never read,
/// because :/qt/etc/qt.conf is built in.
void useTrustedLibraryPaths();

/// Returns true if only the administrator and the current user can change the folder, anything in
/// it, or one of its parents. False on systems without Unix permissions.
bool isTrustedFolder(const QString& folder);

/// Returns true if permissions on a file system of this type are enforced by the system that keeps
/// the files. Others, such as FAT or SMB, report permissions that are made up.
bool keepsPermissions(QByteArrayView fileSystem);

} // namespace runtime
