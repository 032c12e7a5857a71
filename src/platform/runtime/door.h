#pragma once

#include <functional>
#include <utility>

namespace runtime {

/// A replaceable function through which the program reaches the outside world, such as a dialog,
/// the clock or the end of the process. Tests and programs can replace the function by another one.
template <typename Signature>
class Door;

template <typename Result, typename... Arguments>
class Door<Result(Arguments...)>
{
public:
    using Function = std::function<Result(Arguments...)>;

    explicit Door(Function function) : function_(std::move(function)) {}

    Result operator()(Arguments... arguments) const
    {
        return function_(std::forward<Arguments>(arguments)...);
    }

    /// Replaces the function and returns the previous one.
    Function replace(Function function) { return std::exchange(function_, std::move(function)); }

private:
    Function function_;
};

} // namespace runtime
