#pragma once

#include "shop/documents.h"

namespace shoptools {

/// Returns all documents that the command `plan` can write, in the order in which the documentation
/// lists them.
const std::vector<shop::DocumentKind>& documentKinds();

} // namespace shoptools
