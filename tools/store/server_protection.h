#pragma once

namespace storetools {

/// The SQL text that creates the log of changes in the schema zomrel_log, and the triggers on the
/// store's tables. The text is a part of the setup script. An event trigger creates the triggers of
/// tables that are added later.
extern const char* const serverProtection;

} // namespace storetools
