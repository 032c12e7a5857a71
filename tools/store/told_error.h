#pragma once

#include "platform/runtime/run_time_error.h"

namespace storetools {

/// An error of a command. Its description is in the user's language, unlike the English
/// descriptions of the database engine's errors.
class ToldError : public runtime::RunTimeError
{
public:
    /// Creates an error. If `nextStep` is empty, the program prints the general advice for the
    /// error number.
    ToldError(int number, QString description, QString nextStep = {})
        : RunTimeError(number, std::move(description)), nextStep_(std::move(nextStep))
    {
    }
    const QString& nextStep() const { return nextStep_; }

private:
    QString nextStep_;
};

} // namespace storetools
