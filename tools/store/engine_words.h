#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Hebrew translations of the English texts of the database engines: findings about a store,
/// hazards of a server, connected stations, and descriptions of errors.
namespace storetools {

/// Returns the engine's text in the user's language, or nothing if the text has no Hebrew
/// translation.
std::optional<QString> translated(const QString& english);

/// Returns the engine's text in the user's language. If the text has no Hebrew translation, returns
/// a Hebrew sentence that quotes the English text.
QString ofEngine(const QString& english);
QStringList ofEngine(const QStringList& english);

/// Returns the description of where a database is, in the user's language. `place` is the English
/// description that dao::Link::place() returns.
QString placeInWords(const QString& place);

/// Returns the English texts of the database engines that have a Hebrew translation. The texts
/// contain placeholders such as %1.
QStringList knownEngineTexts();

} // namespace storetools
