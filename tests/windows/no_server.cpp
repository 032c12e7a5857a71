// The helpers of the tests start servers with Unix means. On Windows there is none, and all stores
// of the tests are embedded.

#include "support/throwaway_server.h"

namespace testsupport {

namespace {

[[noreturn]] void refuse()
{
    qFatal("The tests start no server on Windows.");
}

} // namespace

ThrowawayDatabase::ThrowawayDatabase(const QString&)
{
    refuse();
}

ThrowawayDatabase::~ThrowawayDatabase() = default;

void ThrowawayDatabase::writeLink(const QString&) const
{
    refuse();
}

bool isOnServer()
{
    return false;
}

dao::Link linkTo(const QString&)
{
    refuse();
}

void databaseOnce(const QString&, const std::function<void(const dao::Link&)>&)
{
    refuse();
}

void runAsKeeper(const QString&)
{
    refuse();
}

} // namespace testsupport
