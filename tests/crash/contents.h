#pragma once

#include <map>
#include <string>

namespace crash {

/// The fields of a row that are not Null, as text.
using Row = std::map<std::string, std::string>;
/// The rows of a store, named by table and key, as in "Orders 1".
using Contents = std::map<std::string, Row>;

/// Reads a store with SQLite alone, which first undoes what a power cut has left half-done. Throws
/// std::runtime_error if the store cannot be opened or read, or fails the engine's integrity check.
Contents readStore(const std::string& path);

/// Returns the first difference as a sentence, or an empty text if there is none.
std::string difference(const Contents& expected, const Contents& found);

} // namespace crash
