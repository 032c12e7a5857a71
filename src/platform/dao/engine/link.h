#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace dao {

/// The place of a store that lies elsewhere: in a database on a server, or in a file in another
/// folder. A link file contains it and takes the place of an embedded store. It never contains a
/// password; the PostgreSQL client library has its own ways to get one.
struct Link
{
    /// Returns a link to an embedded store.
    static Link toFile(const QString& path);

    QString server; ///< Host name, address, or folder of a local socket.
    int port = 5432;
    QString database;
    QString user;
    QString tls = QStringLiteral("verify-full"); ///< TLS mode, one of linkTlsModes().

    /// Absolute path of an embedded store. If it is not empty, the other members are not used.
    QString file = {};

    bool namesFile() const { return !file.isEmpty(); }
    /// Returns the file, or the database and the server, as text for messages.
    QString place() const;

    bool operator==(const Link&) const = default;
};

/// Returns the TLS mode for a server if the user names none: "prefer" for a local socket and for a
/// loopback address, "verify-full" for any other server.
QString defaultTlsMode(const QString& server);

/// Returns the names of the TLS modes, the weakest first.
const QStringList& linkTlsModes();

/// Parses the text of a link file. The path is used for error messages only. Throws
/// UnrecognizedFormat (3343) with a reason if the first line is wrong, a key is missing, unknown or
/// repeated, `file` stands beside another key, or a value is invalid.
Link parseLink(const QByteArray& text, const QString& path);

/// Returns the text of a link file; parseLink is the inverse. Throws UnrecognizedFormat (3343) for
/// a value that a link file cannot contain.
QByteArray linkText(const Link& link);

/// Returns the link in the file at the path, or nothing if the file is not a link file. Throws
/// UnrecognizedFormat (3343) for a damaged link file.
std::optional<Link> linkAt(const QString& path);

/// Returns the file that a link names. The path is the link's own and is used for the error
/// message. Throws UnrecognizedFormat (3343) if the file is a link itself.
QString linkedFile(const Link& link, const QString& path);

/// Returns true if the file starts like a link file, regardless of its size. The function opens and
/// closes the file.
bool beginsAsLink(const QString& path);

} // namespace dao
