#pragma once

namespace storetools {

/// The part of the server's setup script (SQL) that creates the log of changes in the schema
/// zomrel_log, and the triggers on the store's tables. An event trigger adds these triggers to
/// tables that are created later.
extern const char* const serverProtection;

} // namespace storetools
