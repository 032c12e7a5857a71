#include "platform/runtime/run_time_error.h"
#include "support/printers.h"
#include "tools/shop/program.h"
#include "tools/store/command.h"

#include <gtest/gtest.h>

#include <new>
#include <system_error>

using namespace Qt::StringLiterals;

namespace {

template <typename Error>
std::pair<int, QString> outcomeOf(const Error& error)
{
    QString text;
    QTextStream err(&text);
    const int status = shoptools::guarded([&]() -> storetools::ExitStatus { throw error; }, err);
    return {status, text};
}

} // namespace

TEST(GuardedTest, EachException_IsAMessageAndAFailure)
{
    EXPECT_EQ(outcomeOf(std::bad_alloc()),
              std::pair(1, u"zomrel-shop: there is not enough memory\n"_s));
    EXPECT_EQ(outcomeOf(runtime::RunTimeError(51, u"wrong"_s)),
              std::pair(1, u"zomrel-shop: wrong\n"_s));
    const auto [status, text] = outcomeOf(
        std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again)));
    EXPECT_EQ(status, 1);
    EXPECT_TRUE(text.startsWith(u"zomrel-shop: "_s));
    EXPECT_EQ(outcomeOf(storetools::WrongCall(u"x"_s)).first, 2);
}
