#pragma once

#include <QString>

namespace testsupport {

/// Fails the running test. Where none runs, fails the whole binary: exitStatus() is then not 0.
/// Defined once for GoogleTest and once for Qt Test; a test binary links one of the two.
void reportFailure(const QString& message);

/// The exit status of a test binary: the framework's own, or 1 where that is 0 although a failure
/// was reported while no test ran.
int exitStatus(int frameworkStatus);

} // namespace testsupport
