#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace dao {

/// The location of a store in a database on a server or in a file in another folder. A link file
/// contains this location. The program accepts a link file at every path at which it accepts an
/// embedded store, except at the path that another link file names. A link never contains a
/// password, because the PostgreSQL client library has its own ways to get the password.
struct Link
{
    /// Returns a link to an embedded store.
    static Link toFile(const QString& path);

    QString server; ///< Host name, address, or folder of a local socket.
    int port = 5432;
    QString database;
    QString user;
    QString tls = QStringLiteral("verify-full"); ///< TLS mode, one of linkTlsModes().

    /// The absolute path of an embedded store, or empty for a store on a server. If the path is not
    /// empty, the other members are not used.
    QString file = {};

    bool namesFile() const { return !file.isEmpty(); }
    /// Returns a text for messages: the path of the file, or the names of the database and the
    /// server.
    QString place() const;

    bool operator==(const Link&) const = default;
};

/// Returns the TLS mode for a server if the user specifies none. The mode is "prefer" for a local
/// socket and for a loopback address, and "verify-full" for any other server.
QString defaultTlsMode(const QString& server);

/// Returns the names of the TLS modes in ascending order of security.
const QStringList& linkTlsModes();

/// Parses the text of a link file. The path is used only in error messages. Throws
/// UnrecognizedFormat (3343) with the reason if the first line is wrong, if a key is missing,
/// unknown or repeated, if the key `file` occurs together with another key, or if a value is
/// invalid.
Link parseLink(const QByteArray& text, const QString& path);

/// Returns the text of the link file for a link. parseLink is the inverse function. Throws
/// UnrecognizedFormat (3343) if the link has a value that a link file cannot contain.
QByteArray linkText(const Link& link);

/// Returns the link in the file at the path, or nothing if the file is not a link file. Throws
/// UnrecognizedFormat (3343) for a damaged link file.
std::optional<Link> linkAt(const QString& path);

/// Returns the path of the embedded store that a link names. `path` is the path of the link file
/// for the error message. Throws UnrecognizedFormat (3343) if the named file is itself a link file.
QString linkedFile(const Link& link, const QString& path);

/// Returns true if the file starts like a link file, regardless of its size. The function opens and
/// closes the file, which releases all POSIX locks that this process holds on the file.
bool beginsAsLink(const QString& path);

} // namespace dao
