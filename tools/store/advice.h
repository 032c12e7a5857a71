#pragma once

#include <QString>

namespace runtime {
class RunTimeError;
}

namespace storetools {

/// Returns what happened, in the user's language. An error of the engine that has no Hebrew text is
/// described in general, and its English text follows as details.
QString happened(const runtime::RunTimeError& error);

/// Returns what the user should do about an error, in the user's language.
QString nextStep(const runtime::RunTimeError& error);

} // namespace storetools
