#include "platform/controls/refusal.h"

#include "platform/runtime/run_time_error.h"

#include <gtest/gtest.h>

#include <QSet>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

TEST(Refusal, EachReasonHasItsOwnText)
{
    const QList<int> numbers{
        runtime::FieldTooSmall,      runtime::FieldRequired, runtime::DuplicateKey,
        runtime::DataTypeConversion, runtime::Locked,        runtime::RecordDeleted,
        runtime::ReadOnly,           runtime::DiskFull,      runtime::DiskOrNetworkError,
    };
    QSet<QString> written;
    QSet<QString> deleted;
    for (const int number : numbers) {
        written.insert(controls::writeRefusal(RunTimeError(number)));
        deleted.insert(controls::deleteRefusal(RunTimeError(number)));
    }
    EXPECT_EQ(written.size(), numbers.size());
    EXPECT_EQ(deleted.size(), numbers.size());
    for (const QString& text : written) {
        EXPECT_TRUE(text.startsWith(u"השורה לא נשמרה: "_s)) << text.toStdString();
        EXPECT_TRUE(text.contains(u"Esc"_s)) << text.toStdString();
    }
}

TEST(Refusal, OtherReasonsShowTheErrorNumber)
{
    const RunTimeError error(runtime::InternalError);
    EXPECT_TRUE(controls::writeRefusal(error).contains(u"(51)"_s));
    EXPECT_TRUE(controls::deleteRefusal(error).contains(u"(51)"_s));
    EXPECT_TRUE(controls::readRefusal(error).contains(u"(51)"_s));
}
