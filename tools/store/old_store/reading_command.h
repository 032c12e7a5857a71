#pragma once

namespace storetools {

/// Name of the hidden command that reads an old file and writes its contents to the standard
/// output.
constexpr auto readingCommand = "read-old-store";

} // namespace storetools
