#include "support/test_failure.h"

#include <cstdio>

#include <gtest/gtest.h>

namespace testsupport {

namespace {

bool failedOutsideOfATest = false;

} // namespace

void reportFailure(const QString& message)
{
    if (testing::UnitTest::GetInstance()->current_test_info() != nullptr) {
        ADD_FAILURE() << message.toStdString();
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
