#include "tools/store/old_store/old_files.h"
#include "tools/store/steps/workshop.h"

#include "support/printers.h"

#include <functional>

using namespace Qt::StringLiterals;
using namespace storetooltest;

namespace {

constexpr int mostSteps = 1000;

/// A command that is killed at each of its steps, in a new workshop each time.
struct KilledCommand
{
    QString name;
    bool noHardLinks = false;
    /// Prepares the workshop.
    std::function<void(Workshop&)> prepare = {};
    std::function<QStringList(const Workshop&)> arguments = {};
    /// Checks the files after the kill, and after the command has run again to its end.
    std::function<void(const Workshop&)> afterKill = {};
    std::function<void(const Workshop&)> afterEnd = {};
};

/// Runs the command with a station at work until it is killed at the step. Returns false if it ends
/// before.
bool killAt(int step, const KilledCommand& command, Workshop& workshop)
{
    SteppedProgram program(command.arguments(workshop),
                           {.folder = workshop.folder(),
                            .step = step,
                            .noHardLinks = command.noHardLinks,
                            .temporaryFolder = workshop.temporaryFolder()});
    while (program.isRunning())
        workshop.addLine();
    return program.wasKilled();
}

/// Expects that the command succeeds after the kill and leaves no temporary file.
void repeat(const KilledCommand& command, const Workshop& workshop)
{
    SteppedProgram again(command.arguments(workshop),
                         {.folder = {}, .temporaryFolder = workshop.temporaryFolder()});
    const Outcome outcome = again.outcome();
    // The killed command may have been complete.
    if (outcome.exitStatus != 0) {
        EXPECT_EQ(outcome.err.size(), 1);
        EXPECT_TRUE(outcome.err.value(0).endsWith(u"already exists."_s))
            << outcome.err.join(u'\n').toStdString();
    }
    EXPECT_EQ(workshop.filesIn(u"tmp"_s), QStringList());
    command.afterEnd(workshop);
}

void killAtEveryStep(const KilledCommand& command)
{
    int steps = 0;
    for (bool killed = true; killed && !testing::Test::HasFailure() && steps < mostSteps;) {
        SCOPED_TRACE(testing::Message() << "kill at step " << ++steps);
        Workshop workshop;
        command.prepare(workshop);
        killed = killAt(steps, command, workshop);
        expectSound(workshop.store());
        command.afterKill(workshop);
        repeat(command, workshop);
        expectSound(workshop.store());
    }
    EXPECT_GT(steps, 8);
    std::printf("%s: killed at %d steps\n", qPrintable(command.name), steps - 1);
}

/// Checks a file that is complete or does not exist.
void expectWholeIfThere(const QString& path, int fewestLines)
{
    if (!QFile::exists(path))
        return;
    expectSound(path);
    EXPECT_GE(Workshop::linesIn(path).size(), fewestLines);
}

/// A command that creates the file "new.mdb" in the folder of targets.
KilledCommand creating(const QString& name, int fewestLines, const QStringList& words)
{
    const auto target = [](const Workshop& workshop) { return workshop.target(u"new.mdb"_s); };
    return {.name = name,
            .prepare = [](Workshop&) {},
            .arguments =
                [=](const Workshop& workshop) {
                    QStringList arguments = words;
                    for (QString& each : arguments)
                        each.replace(u"STORE"_s, workshop.store());
                    return arguments << target(workshop);
                },
            .afterKill =
                [=](const Workshop& workshop) {
                    expectWholeIfThere(target(workshop), fewestLines);
                    workshop.expectNoLineLost({workshop.store()});
                },
            .afterEnd =
                [=](const Workshop& workshop) {
                    EXPECT_EQ(workshop.filesIn(u"target"_s), QStringList{u"new.mdb"_s});
                    expectWholeIfThere(target(workshop), fewestLines);
                }};
}

/// Returns the stores that restores have kept.
QStringList keptStores(const Workshop& workshop)
{
    QStringList kept;
    for (const QString& name : workshop.filesIn({}).filter(u".before-restore"_s))
        kept.append(workshop.folder() + u'/' + name);
    return kept;
}

void expectOldOrNewStore(const Workshop& workshop)
{
    const bool isNew = Workshop::linesIn(workshop.store()).size() == 3;
    for (const QString& kept : keptStores(workshop))
        expectSound(kept);
    workshop.expectNoLineLost(isNew ? keptStores(workshop) : QStringList{workshop.store()});
}

KilledCommand restoring(bool noHardLinks)
{
    return {
        .name = noHardLinks ? u"restore without hard links"_s : u"restore"_s,
        .noHardLinks = noHardLinks,
        .prepare =
            [](Workshop& workshop) {
                const QString backup = workshop.target(u"copy.mdb"_s);
                ASSERT_EQ(zomrelStore({u"backup"_s, workshop.store(), backup}).exitStatus, 0);
                ASSERT_TRUE(workshop.addLine());
            },
        .arguments =
            [](const Workshop& workshop) {
                return QStringList{u"restore"_s, workshop.target(u"copy.mdb"_s), workshop.store()};
            },
        .afterKill = expectOldOrNewStore,
        .afterEnd =
            [](const Workshop& workshop) {
                EXPECT_EQ(Workshop::linesIn(workshop.store()).size(), 3);
                for (const QString& file : workshop.filesIn({}))
                    EXPECT_FALSE(file.startsWith(u'.')) << file.toStdString();
                workshop.expectNoLineLost(keptStores(workshop));
            }};
}

} // namespace

TEST(KilledCommandsTest, Create_leavesNothingOrAStore)
{
    killAtEveryStep(creating(u"create"_s, 0, {u"create"_s}));
}

TEST(KilledCommandsTest, Backup_leavesNothingOrAWholeBackup)
{
    killAtEveryStep(creating(u"backup"_s, 3, {u"backup"_s, u"STORE"_s}));
}

TEST(KilledCommandsTest, Move_leavesNothingOrAWholeStore)
{
    killAtEveryStep(creating(u"move"_s, 3, {u"move"_s, u"STORE"_s}));
}

TEST(KilledCommandsTest, Import_leavesNothingOrAWholeStore)
{
    const QString old = oldFile(u"old-store.mdb"_s);
    killAtEveryStep(creating(u"import"_s, 1, {u"import"_s, old}));
}

TEST(KilledCommandsTest, Restore_leavesTheOldOrTheNewStore)
{
    killAtEveryStep(restoring(false));
}

TEST(KilledCommandsTest, RestoreWithoutHardLinks_leavesTheOldOrTheNewStore)
{
    killAtEveryStep(restoring(true));
}
