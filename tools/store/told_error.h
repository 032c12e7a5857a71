#pragma once

#include "platform/runtime/run_time_error.h"

namespace storetools {

/// An error of a command, described in the user's language. The engine's errors are English.
class ToldError : public runtime::RunTimeError
{
public:
    /// Creates an error. An empty text for the next step stands for the advice on the number.
    ToldError(int number, QString description, QString nextStep = {})
        : RunTimeError(number, std::move(description)), nextStep_(std::move(nextStep))
    {
    }
    const QString& nextStep() const { return nextStep_; }

private:
    QString nextStep_;
};

} // namespace storetools
