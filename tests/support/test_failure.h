#pragma once

#include <QString>

namespace testsupport {

/// Fails the running test. If no test is running, fails the whole test binary: exitStatus() is then
/// not 0. The function is defined once for GoogleTest and once for Qt Test; a test binary links one
/// of the two.
void reportFailure(const QString& message);

/// Returns the exit status of a test binary. It is that of the framework, or 1 if the framework's
/// is 0 although a failure was reported while no test was running.
int exitStatus(int frameworkStatus);

} // namespace testsupport
