#pragma once

#include <chrono>

namespace dao {

/// Bounds the wait for a server's answer. While it lives, a call that blocks on the socket goes on;
/// when the patience is over, the socket is shut down, so that the call fails at once. One for each
/// call, on any thread.
class AnswerWatch
{
public:
    AnswerWatch(int socket, std::chrono::milliseconds patience);
    ~AnswerWatch();
    AnswerWatch(const AnswerWatch&) = delete;
    AnswerWatch& operator=(const AnswerWatch&) = delete;

    /// True once the socket has been shut down.
    bool hasExpired() const;

private:
    class Watchman;
    static Watchman& watchman();

    int id_;
};

} // namespace dao
