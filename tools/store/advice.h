#pragma once

#include <QString>

namespace runtime {
class RunTimeError;
}

namespace storetools {

/// Returns a description of the error in the user's language. If the error is one of the SQL engine
/// and has no Hebrew text, returns a general description, followed by the English text as details.
QString happened(const runtime::RunTimeError& error);

/// Returns a text in the user's language that says what the user should do about the error.
QString nextStep(const runtime::RunTimeError& error);

} // namespace storetools
