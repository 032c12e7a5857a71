#include "tools/store/steps/workshop.h"

#include "support/printers.h"

using namespace Qt::StringLiterals;
using namespace storetooltest;

namespace {

constexpr int mostSteps = 500;

} // namespace

/// The command is stopped before each of its steps in the target's folder, as by a disk that takes
/// any time for the step.
TEST(SlowTargetTest, Backup_whereverTheTargetIsSlow_letsStationsWork)
{
    Workshop workshop;
    workshop.setPatience(0);
    int steps = 0;
    for (bool stopped = true; stopped && steps < mostSteps && !testing::Test::HasFailure();) {
        const QString target = workshop.target(u"copy%1.mdb"_s.arg(++steps));
        SteppedProgram backup({u"backup"_s, workshop.store(), target},
                              {.folder = workshop.folder() + u"/target"_s,
                               .step = steps,
                               .signal = SIGSTOP,
                               .temporaryFolder = workshop.temporaryFolder()});
        stopped = backup.waitUntilStopped();
        const int before = workshop.acknowledged();
        if (stopped) {
            EXPECT_TRUE(workshop.addLine()) << "step " << steps;
            backup.resume();
        }
        EXPECT_EQ(backup.outcome().exitStatus, 0);
        expectSound(target);
        const qsizetype copied = Workshop::linesIn(target).size();
        EXPECT_GE(copied, before);
        EXPECT_LE(copied, workshop.acknowledged());
    }
    // At least: create, write, set the access, sync, rename, sync the folder.
    EXPECT_GT(steps, 6);
    workshop.expectNoLineLost({workshop.store()});
    std::printf("%d steps of a backup on its target\n", steps - 1);
}

/// A station adds a line before each step of a restore. A line that the store acknowledges is in
/// the store that the restore keeps.
TEST(SlowTargetTest, Restore_whateverAStationAddsMeanwhile_keepsEveryLine)
{
    for (const bool noHardLinks : {false, true}) {
        int steps = 0;
        for (bool stopped = true; stopped && steps < mostSteps && !testing::Test::HasFailure();) {
            SCOPED_TRACE(testing::Message() << "step " << ++steps << ", links " << !noHardLinks);
            Workshop workshop;
            const QString backup = workshop.target(u"copy.mdb"_s);
            ASSERT_EQ(zomrelStore({u"backup"_s, workshop.store(), backup}).exitStatus, 0);
            ASSERT_TRUE(workshop.addLine());
            workshop.setPatience(0);
            SteppedProgram restore({u"restore"_s, backup, workshop.store()},
                                   {.folder = workshop.folder(),
                                    .step = steps,
                                    .signal = SIGSTOP,
                                    .noHardLinks = noHardLinks,
                                    .temporaryFolder = workshop.temporaryFolder()});
            stopped = restore.waitUntilStopped();
            if (stopped) {
                workshop.addLine();
                restore.resume();
            }
            EXPECT_EQ(restore.outcome().exitStatus, 0);
            EXPECT_EQ(Workshop::linesIn(workshop.store()).size(), 3);
            workshop.expectNoLineLost({workshop.store() + u".before-restore"_s});
            expectSound(workshop.store());
        }
        EXPECT_GT(steps, 10);
        std::printf("%d steps of a restore, hard links: %d\n", steps - 1, !noHardLinks);
    }
}
