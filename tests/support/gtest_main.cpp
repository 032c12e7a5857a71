#include "support/doors.h"
#include "support/plain_environment.h"
#include "support/test_failure.h"

#include <QCoreApplication>
#include <QLocale>

#include <gtest/gtest.h>

namespace {

int runTests(int argc, char** argv)
{
    testsupport::setPlainEnvironment();
    QCoreApplication application(argc, argv);
    QLocale::setDefault(QLocale::c());
    testing::InitGoogleTest(&argc, argv);
    testsupport::failOnUnwatchedBoxes();
    return RUN_ALL_TESTS();
}

} // namespace

int main(int argc, char** argv)
{
    return testsupport::exitStatus(runTests(argc, argv));
}
