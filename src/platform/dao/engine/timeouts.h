#pragma once

#include <chrono>

namespace dao {

/// How long to wait for a store.
struct Timeouts
{
    /// The time to wait for a lock of another station. After it, Locked (3260) is thrown.
    std::chrono::milliseconds lock = std::chrono::seconds(5);
    /// The time to wait for a server's answer to one statement. After it, CallFailed (3146) is
    /// thrown. It must be longer than `lock`, because the server reports a lock that is held too
    /// long.
    std::chrono::milliseconds answer = std::chrono::seconds(7);

    bool operator==(const Timeouts&) const = default;
};

} // namespace dao
