// Every kind of damage that the tests plant is found by the check of a store, and a store that the
// check refuses cannot be restored.

#include "support/printers.h"
#include "support/store_harms.h"
#include "support/temporary_store.h"
#include "tools/store/backup.h"
#include "tools/store/checker.h"
#include "tools/store/place.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testsupport::StoreHarm;
using testsupport::TemporaryStore;

namespace {

/// A store with the delivered catalogue, two orders and their lines.
struct HarmedStore
{
    HarmedStore()
    {
        for (int order = 1; order <= 2; ++order) {
            store.addOrder(order, true);
            for (int line = 1; line <= 3; ++line)
                store.addLine(order, line);
        }
    }
    explicit HarmedStore(const StoreHarm& harm) : HarmedStore()
    {
        testsupport::PlainSql sql(store.path());
        for (const QString& each : harm.statements)
            sql.exactly(each);
    }

    TemporaryStore store{TemporaryStore::Contents::Delivered};
};

} // namespace

TEST(HarmTest, StoreWithoutHarmIsSound)
{
    const HarmedStore sound;
    const storetools::CheckReport report = storetools::checkReport(
        storetools::Place(sound.store.path()), storetools::Figures::Skipped);
    EXPECT_EQ(report.findings, QStringList());
    EXPECT_EQ(report.remarks, QStringList());
}

TEST(HarmTest, CheckFindsEveryHarm)
{
    for (const StoreHarm& harm : testsupport::storeHarms()) {
        const HarmedStore harmed(harm);
        EXPECT_FALSE(storetools::checkStore(harmed.store.path()).isEmpty()) << harm.name;
    }
}

TEST(HarmTest, RestoreRefusesEveryHarm)
{
    if (testsupport::isOnServer())
        GTEST_SKIP() << "a backup is a file";
    for (const StoreHarm& harm : testsupport::storeHarms()) {
        const HarmedStore harmed(harm);
        const QString target = harmed.store.folder() + u"/restored.mdb"_s;
        const storetools::RestoreOutcome outcome =
            storetools::restoreStore(storetools::Place(harmed.store.path()),
                                     storetools::Place(target), storetools::Oddities::Refused, {});
        EXPECT_FALSE(outcome.findings.isEmpty()) << harm.name;
        EXPECT_FALSE(QFile::exists(target)) << harm.name;
    }
}
