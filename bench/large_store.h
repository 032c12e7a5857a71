#pragma once

#include "support/temporary_store.h"

namespace bench {

/// Fills the store with the orders 1 to `orders`, each with `linesEach` lines. All but the last
/// order are closed.
void fillStore(testsupport::TemporaryStore& store, int orders, int linesEach);

} // namespace bench
