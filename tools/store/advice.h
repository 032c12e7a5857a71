#pragma once

#include <QString>

namespace runtime {
class RunTimeError;
}

namespace storetools {

/// Returns a description of the error in the user's language. If the user's language is Hebrew and
/// the SQL engine's English description has no translation, returns a general Hebrew description,
/// followed by the English one as details.
QString happened(const runtime::RunTimeError& error);

/// Returns a text in the user's language that says what the user should do about the error.
QString nextStep(const runtime::RunTimeError& error);

} // namespace storetools
