#pragma once

#include "support/temporary_store.h"

namespace bench {

/// Fills the store with orders 1 to `orders` of `linesEach` lines each, all closed but the last.
void fillStore(testsupport::TemporaryStore& store, int orders, int linesEach);

} // namespace bench
