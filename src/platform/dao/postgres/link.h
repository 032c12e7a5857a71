#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace dao {

/// Where a store on a server is found. A link file says it in place of an embedded store; it never
/// holds a password, for which the server's own client library has its ways.
struct Link
{
    QString server; ///< A host's name or address, or the folder of a local socket.
    int port = 5432;
    QString database;
    QString user;
    QString tls = QStringLiteral("prefer"); ///< One of linkTlsModes().

    /// The store's place as a person is told of it: database and server.
    QString place() const;
    /// The server alone.
    QString host() const;

    bool operator==(const Link&) const = default;
};

/// The names of the TLS modes, the weakest first.
const QStringList& linkTlsModes();

/// Takes a link's text apart. The path is for the error's text. Throws UnrecognizedFormat (3343)
/// with what is wrong for anything but the first line, each key once, and a value that can be.
Link parseLink(const QByteArray& text, const QString& path);

/// The text that parseLink gives the link back from. Throws UnrecognizedFormat (3343) as it does
/// for a value that cannot be in a link.
QByteArray linkText(const Link& link);

/// The link that lies at the path; nothing where no link lies there. Throws UnrecognizedFormat
/// (3343) for a damaged one.
std::optional<Link> linkAt(const QString& path);

/// True for a file that begins as a link does, however long it is. It opens and closes the file.
bool beginsAsLink(const QString& path);

} // namespace dao
