#pragma once

#include "platform/runtime/run_time_error.h"

namespace storetools {

/// An error of a command, described in the user's language. The engine's errors are English.
class ToldError : public runtime::RunTimeError
{
public:
    /// Creates an error. If `nextStep` is empty, the advice for the error number is printed.
    ToldError(int number, QString description, QString nextStep = {})
        : RunTimeError(number, std::move(description)), nextStep_(std::move(nextStep))
    {
    }
    const QString& nextStep() const { return nextStep_; }

private:
    QString nextStep_;
};

} // namespace storetools
