#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Hebrew translations of the English messages of the database engines: findings about a store,
/// dangerous settings of a server, connected stations, and descriptions of errors.
namespace storetools {

/// Translates an English message of a database engine to the user's language. Returns nothing if
/// the user's language is Hebrew and the message has no Hebrew translation.
std::optional<QString> translated(const QString& english);

/// Translates an English message of a database engine to the user's language. If that is English,
/// returns the message unchanged. If it is Hebrew and the message has no translation, returns a
/// Hebrew sentence that quotes the message.
QString ofEngine(const QString& english);
QStringList ofEngine(const QStringList& english);

/// Translates `place`, the English description of a database's location, to the user's language.
/// dao::Link::place() returns such descriptions.
QString placeInWords(const QString& place);

/// Returns the English messages of the database engines that have a Hebrew translation. The
/// messages contain placeholders such as %1.
QStringList knownEngineTexts();

} // namespace storetools
