#include "support/printers.h"
#include "support/temporary_store.h"
#include "tools/store/program_run.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using storetooltest::contentsOf;
using storetooltest::Outcome;
using storetooltest::zomrelStore;

TEST(ProgramTest, CreateMakesASoundStore)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"חנות.mdb"_s);
    const Outcome created = zomrelStore({u"create"_s, path});
    EXPECT_EQ(created.exitStatus, 0);
    EXPECT_EQ(created.out, QStringList{u"created "_s + path});
    EXPECT_TRUE(created.err.isEmpty());

    const QByteArray before = contentsOf(path);
    const Outcome checked = zomrelStore({u"check"_s, path});
    EXPECT_EQ(checked.exitStatus, 0);
    EXPECT_EQ(checked.out, QStringList{u"sound and complete: "_s + path});
    EXPECT_TRUE(checked.err.isEmpty());
    EXPECT_EQ(contentsOf(path), before);
}

TEST(ProgramTest, RelativePathIsResolvedFromTheWorkingFolder)
{
    const QTemporaryDir folder;
    EXPECT_EQ(zomrelStore({u"create"_s, u"Aluminium.mdb"_s}, folder.path()).exitStatus, 0);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{u"Aluminium.mdb"_s});
}

TEST(ProgramTest, CreateKeepsAnExistingFile)
{
    testsupport::TemporaryStore store;
    store.addOrder(1);
    const QByteArray before = contentsOf(store.path());
    const Outcome outcome = zomrelStore({u"create"_s, store.path()});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_TRUE(outcome.out.isEmpty());
    EXPECT_EQ(outcome.err,
              QStringList{u"zomrel-store: Database '%1' already exists."_s.arg(store.path())});
    EXPECT_EQ(contentsOf(store.path()), before);
}

TEST(ProgramTest, CheckPrintsALineForEachFinding)
{
    testsupport::TemporaryStore store;
    store.execute(u"DROP TABLE KanafKind"_s);
    store.execute(u"DROP TABLE KanafColor"_s);
    const Outcome outcome = zomrelStore({u"check"_s, store.path()});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.out, (QStringList{u"KanafKind: the table is missing"_s,
                                        u"KanafColor: the table is missing"_s}));
    EXPECT_TRUE(outcome.err.isEmpty());
    EXPECT_TRUE(outcome.advice.value(0).contains(u"restore a sound backup"_s));
}

/// The figure may be right and the series changed, so no backup is to be restored.
TEST(ProgramTest, CheckOfAChangedSeriesAdvisesToCompareTheFigures)
{
    testsupport::TemporaryStore store;
    store.addSeries(u"סדרה"_s, {-0.6, -0.6, -2.8, -6.5, -19.6, -19.7, -2.4, -6.9}, 2, 2);
    store.addOrder(1);
    store.addLine(1, 1);
    store.execute(u"UPDATE Serials SET Kanaf_H = 0"_s);
    const Outcome outcome = zomrelStore({u"check"_s, u"--figures"_s, store.path()});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.out.size(), 1);
    EXPECT_TRUE(outcome.advice.value(0).contains(u"Compare these lines with their series"_s));
}

TEST(ProgramTest, CheckOfAMissingFileFails)
{
    const QTemporaryDir folder;
    const Outcome outcome = zomrelStore({u"check"_s, folder.filePath(u"absent.mdb"_s)});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.out.size(), 1);
    EXPECT_FALSE(QFile::exists(folder.filePath(u"absent.mdb"_s)));
}

TEST(ProgramTest, PrintsItsVersion)
{
    const Outcome outcome = zomrelStore({u"--version"_s});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.out, QStringList{u"zomrel-store 2.1.0.60"_s});
}

TEST(ProgramTest, HelpHasALineForEachCommand)
{
    const Outcome outcome = zomrelStore({u"--help"_s});
    EXPECT_EQ(outcome.exitStatus, 0);
    for (const QString& call :
         {u"create FILE"_s, u"check FILE"_s, u"backup FILE TO"_s, u"restore BACKUP FILE"_s,
          u"import OLD.mdb TO"_s, u"move FROM TO"_s, u"link FILE"_s, u"server-setup"_s,
          u"history ORDER"_s, u"--help"_s, u"--version"_s}) {
        const QStringList found = outcome.out.filter(u"zomrel-store %1 "_s.arg(call));
        EXPECT_EQ(found.size(), 1) << call.toStdString();
    }
}

TEST(ProgramTest, InvalidCommandLinePrintsTheUsage)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"new.mdb"_s);
    const QList<QStringList> wrong{
        {},
        {u"destroy"_s, path},
        {u"create"_s},
        {u"create"_s, path, path},
        {u"check"_s},
        {u"backup"_s, path},
        {u"restore"_s, path},
        {u"import"_s, path},
        {u"move"_s, path},
        {u"link"_s, path},
        {u"server-setup"_s, path},
        {u"Create"_s, path},
        {u"--help"_s, u"create"_s},
    };
    for (const QStringList& arguments : wrong) {
        const Outcome outcome = zomrelStore(arguments);
        EXPECT_EQ(outcome.exitStatus, 2) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(outcome.out.isEmpty());
        EXPECT_TRUE(outcome.err.contains(u"usage:"_s));
    }
    EXPECT_FALSE(QFile::exists(path));
}

TEST(ProgramTest, WrongOption_isNamedInTheFirstLine)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"new.mdb"_s);
    const auto firstLine = [](const QStringList& arguments) {
        const Outcome outcome = zomrelStore(arguments);
        EXPECT_EQ(outcome.exitStatus, 2) << arguments.join(u' ').toStdString();
        return outcome.err.value(0);
    };
    EXPECT_EQ(firstLine({u"import"_s, path, path, u"--cut-numbers"_s}),
              u"zomrel-store: import takes OLD.mdb TO"_s);
    EXPECT_EQ(firstLine({u"server-setup"_s, u"--user"_s, u"me"_s}),
              u"zomrel-store: server-setup takes nothing"_s);
#ifdef Q_OS_UNIX // On Windows the import has no options, because it only says where it runs.
    EXPECT_EQ(firstLine({u"import"_s, path, path, u"--code-page"_s}),
              u"zomrel-store: --code-page takes CP"_s);
    EXPECT_EQ(firstLine({u"import"_s, path, path, u"--code-page"_s, u"x"_s}),
              u"zomrel-store: there is no code page 'x' with a byte for each character"_s);
#endif
}

/// A command ends with a failure if its output is lost, even if its work is done.
#ifdef Q_OS_UNIX // Windows has no output that is always full, and the shell is a Unix one.
TEST(ProgramTest, OutputThatCannotBeWritten_isAFailure)
{
    testsupport::TemporaryStore store;
    const QString folder = store.folder();
    const QList<QStringList> commands{
        {u"check"_s, store.path()},
        {u"create"_s, folder + u"/new.mdb"_s},
        {u"backup"_s, store.path(), folder + u"/copy.mdb"_s},
        {u"restore"_s, folder + u"/copy.mdb"_s, folder + u"/new.mdb"_s},
        {u"move"_s, store.path(), folder + u"/moved.mdb"_s},
        {u"server-setup"_s},
        {u"--help"_s},
        {u"--version"_s},
    };
    for (const QStringList& command : commands) {
        QProcess process;
        process.setProcessEnvironment(storetooltest::environmentIn(u"C.UTF-8"_s));
        process.setStandardOutputFile(u"/dev/full"_s);
        process.start(QStringLiteral(ZOMREL_STORE_PROGRAM), command);
        ASSERT_TRUE(storetooltest::hasEnded(process));
        EXPECT_EQ(process.exitCode(), 1) << command.first().toStdString();
        const Outcome outcome = storetooltest::outcomeOf(process);
        EXPECT_EQ(outcome.advice.size(), 1) << command.first().toStdString();
        EXPECT_EQ(outcome.err, QStringList{u"zomrel-store: could not write the output: "
                                           "No space left on device"_s});
    }
}

TEST(ProgramTest, ClosedOutput_isAFailureAndHarmsNoFile)
{
    testsupport::TemporaryStore store;
    const QString copy = store.folder() + u"/copy.mdb"_s;
    QProcess process;
    process.start(u"/bin/sh"_s, {u"-c"_s, u"exec \"$0\" backup \"$1\" \"$2\" >&-"_s,
                                 QStringLiteral(ZOMREL_STORE_PROGRAM), store.path(), copy});
    ASSERT_TRUE(storetooltest::hasEnded(process));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(storetooltest::outcomeOf(process).err.size(), 1);
    EXPECT_EQ(contentsOf(copy), contentsOf(store.path()));
}
#endif
