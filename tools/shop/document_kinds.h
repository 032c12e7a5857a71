#pragma once

#include "shop/documents.h"

namespace shoptools {

/// Returns all documents that `plan` writes, in the order of the documentation.
const std::vector<shop::DocumentKind>& documentKinds();

} // namespace shoptools
