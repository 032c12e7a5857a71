#pragma once

#include "platform/dao/engine/link.h"
#include "platform/dao/fixture.h"

namespace daotest {

struct Failure
{
    int number = 0;
    QString text;
};

inline Failure failureOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const runtime::RunTimeError& error) {
        return {error.number(), error.description()};
    }
    return {};
}

class ServerTest : public ItemsTest
{
protected:
    void SetUp() override
    {
        if (!isOnServer())
            GTEST_SKIP() << "applies only to a server";
        ItemsTest::SetUp();
    }
    void TearDown() override
    {
        if (!isOnServer())
            return;
        dao::DBEngine::instance().Workspaces(0).setAnswerWait(dao::Timeouts().answer);
        ItemsTest::TearDown();
    }

    void writeLink(const dao::Link& link) { writeFile(dao::linkText(link)); }
    const dao::Link& link() const { return server_->link(); }

    /// Closes every connection to the store except those of the test itself.
    void endConnections()
    {
        raw_.reset();
        testsupport::runAsKeeper(u"SELECT pg_terminate_backend(pid, 10000) FROM pg_stat_activity "
                                 "WHERE datname = '%1'"_s.arg(link().database));
    }
};

} // namespace daotest
