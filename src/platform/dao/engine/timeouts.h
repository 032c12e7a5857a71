#pragma once

#include <chrono>

namespace dao {

/// How long a store is waited for.
struct Timeouts
{
    /// For what another station has locked; then Locked (3260).
    std::chrono::milliseconds lock = std::chrono::seconds(5);
    /// For a server's answer to one statement; then CallFailed (3146). More than the wait for a
    /// lock, which the server counts.
    std::chrono::milliseconds answer = std::chrono::seconds(7);

    bool operator==(const Timeouts&) const = default;
};

} // namespace dao
