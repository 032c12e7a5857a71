#pragma once

namespace storetools {

/// The name of the hidden command that reads an old store and writes its contents to the standard
/// output.
constexpr auto readingCommand = "read-old-store";

} // namespace storetools
