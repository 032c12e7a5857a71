// Every kind of damage that the tests plant is found by the check of a store, and a store that the
// check refuses cannot be restored.

#include "platform/dao/database.h"
#include "platform/dao/examination.h"
#include "support/printers.h"
#include "support/store_harms.h"
#include "support/temporary_store.h"
#include "tools/store/backup.h"
#include "tools/store/checker.h"
#include "tools/store/in_hebrew.h"
#include "tools/store/place.h"

#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>

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

/// Returns true if a Hebrew finding quotes an English text.
bool isQuoted(const QString& finding)
{
    return finding.contains(u"הודעה של מנוע הנתונים"_s);
}

/// Returns true if a finding contains a text that the engine itself makes. These texts differ from
/// version to version.
bool quotesEngine(const QString& finding, const QString& path)
{
    const QStringList own = dao::engineFindings(*storetools::Place(path).open());
    return std::ranges::any_of(own, [&](const QString& each) { return finding.contains(each); });
}

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

TEST(HarmTest, EveryFindingIsHebrewForAUserWithHebrew)
{
    const storetooltest::InHebrew hebrew;
    for (const StoreHarm& harm : testsupport::storeHarms()) {
        const HarmedStore harmed(harm);
        const storetools::CheckReport report = storetools::checkReport(
            storetools::Place(harmed.store.path()), storetools::Figures::Computed);
        EXPECT_FALSE(report.findings.isEmpty()) << harm.name;
        for (const QString& each : report.findings + report.remarks) {
            EXPECT_TRUE(storetooltest::hasHebrew(each)) << harm.name << ": " << each.toStdString();
            EXPECT_EQ(storetooltest::bareLatin(each), QString())
                << harm.name << ": " << each.toStdString();
            EXPECT_TRUE(!isQuoted(each) || quotesEngine(each, harmed.store.path()))
                << harm.name << ": " << each.toStdString();
        }
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
