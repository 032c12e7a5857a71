#pragma once

namespace storetools {

enum class Language { English, Hebrew };

/// Returns the language of the messages. The language is English until setLanguage() changes it, so
/// that the user's locale does not affect a program that never calls setLanguage().
Language language();
void setLanguage(Language language);

/// Returns Hebrew if the environment variables or the system's settings choose Hebrew for messages,
/// and English otherwise.
Language usersLanguage();

} // namespace storetools
