#pragma once

namespace storetools {

/// The part of the setup script that creates the schema zomrel_log with the log of changes, and the
/// triggers on the store's tables. Tables that are created later get their triggers by an event
/// trigger.
extern const char* const serverProtection;

} // namespace storetools
