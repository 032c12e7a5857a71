#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The Hebrew for the English texts of the engines: findings about a store, hazards of a server,
/// connected stations, and descriptions of errors.
namespace storetools {

/// Returns the text in the user's language, or nothing if there is no Hebrew for it.
std::optional<QString> translated(const QString& english);

/// Returns the text in the user's language. A text without Hebrew is quoted in English.
QString ofEngine(const QString& english);
QStringList ofEngine(const QStringList& english);

/// Returns the place of a database, as dao::Link::place() describes it, in the user's language.
QString placeInWords(const QString& place);

/// Returns the English texts that have a Hebrew one, with their placeholders.
QStringList knownEngineTexts();

} // namespace storetools
