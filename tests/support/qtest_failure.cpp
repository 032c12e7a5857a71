#include "support/test_failure.h"

#include <QTest>

#include <cstdio>

namespace testsupport {

namespace {

bool failedOutsideOfATest = false;

} // namespace

void reportFailure(const QString& message)
{
    if (QTest::currentTestFunction() != nullptr) {
        QTest::qFail(qUtf8Printable(message), __FILE__, __LINE__);
        return;
    }
    std::fprintf(stderr, "FAIL outside of a test: %s\n", qUtf8Printable(message));
    failedOutsideOfATest = true;
}

int exitStatus(int frameworkStatus)
{
    return frameworkStatus == 0 && failedOutsideOfATest ? 1 : frameworkStatus;
}

} // namespace testsupport
