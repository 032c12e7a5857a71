#include "tools/store/old_store/old_files.h"
#include "tools/store/steps/workshop.h"

#include "support/printers.h"

using namespace Qt::StringLiterals;
using namespace storetooltest;

namespace {

/// Returns the steps of a command, one line each: the call and the path.
QStringList stepsOf(const QStringList& arguments, const Workshop& workshop)
{
    const QString log = workshop.temporaryFolder() + u".log"_s;
    SteppedProgram program(
        arguments,
        {.folder = workshop.folder(), .temporaryFolder = workshop.temporaryFolder(), .log = log});
    EXPECT_EQ(program.outcome().exitStatus, 0);
    return lines(contentsOf(log));
}

/// Expects that the new file is on the disk before it gets its name, and that its folder is on the
/// disk afterwards.
void expectDurable(const QStringList& steps, const QString& path)
{
    const QString folder = path.section(u'/', 0, -2);
    const QString unfinished = folder + u"/.zomrel-store-"_s;
    const qsizetype named = steps.lastIndexOf(u"rename "_s + path);
    ASSERT_GT(named, 0) << qUtf8Printable(steps.join(u'\n'));
    qsizetype written = named;
    while (written > 0 && !steps[written].startsWith(u"write "_s + unfinished))
        --written;
    EXPECT_GT(written, 0) << "the file is not written under another name";
    const auto synced = [&](qsizetype from, qsizetype to, const QString& what) {
        return !steps.sliced(from, to - from).filter(u"sync "_s + what).isEmpty();
    };
    EXPECT_TRUE(synced(written, named, unfinished)) << qUtf8Printable(steps.join(u'\n'));
    EXPECT_TRUE(steps.sliced(named).contains(u"sync %1/"_s.arg(folder)))
        << qUtf8Printable(steps.join(u'\n'));
}

} // namespace

TEST(DurabilityTest, NewStores_areOnTheDiskBeforeTheCommandEnds)
{
    const Workshop workshop;
    const QList<QStringList> commands{{u"create"_s},
                                      {u"backup"_s, workshop.store()},
                                      {u"move"_s, workshop.store()},
                                      {u"import"_s, oldFile(u"old-store.mdb"_s)}};
    for (const QStringList& command : commands) {
        SCOPED_TRACE(qPrintable(command.first()));
        const QString target = workshop.target(command.first() + u".mdb"_s);
        expectDurable(stepsOf(command + QStringList{target}, workshop), target);
    }
}

TEST(DurabilityTest, RestoredStoreAndKeptStore_areOnTheDiskBeforeTheCommandEnds)
{
    const Workshop workshop;
    const QString backup = workshop.target(u"copy.mdb"_s);
    ASSERT_EQ(zomrelStore({u"backup"_s, workshop.store(), backup}).exitStatus, 0);
    const QStringList steps = stepsOf({u"restore"_s, backup, workshop.store()}, workshop);
    expectDurable(steps, workshop.store());
    // The second name of the old store is on the disk before its first name is reused.
    const qsizetype kept = steps.indexOf(u"link %1.before-restore"_s.arg(workshop.store()));
    const qsizetype named = steps.indexOf(u"rename "_s + workshop.store());
    ASSERT_GE(kept, 0);
    ASSERT_GT(named, kept);
    EXPECT_TRUE(steps.sliced(kept, named - kept).contains(u"sync %1/"_s.arg(workshop.folder())));
}
