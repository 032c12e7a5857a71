#include "tools/shop/file_set.h"

#include "platform/runtime/run_time_error.h"
#include "support/ordinary_user.h"
#include "support/printers.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
}

QStringList filesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

} // namespace

TEST(FileSetTest, Files_ReplacePreviousOnes)
{
    const QTemporaryDir folder;
    const QString inner = folder.filePath(u"a/b"_s);
    shoptools::writeFiles(inner, {{u"1.csv"_s, "one"}, {u"2.csv"_s, "two"}});
    shoptools::writeFiles(inner, {{u"1.csv"_s, "new"}, {u"3.csv"_s, ""}});
    EXPECT_EQ(filesIn(inner), (QStringList{u"1.csv"_s, u"2.csv"_s, u"3.csv"_s}));
    EXPECT_EQ(contentsOf(inner + u"/1.csv"_s), "new");
    EXPECT_EQ(contentsOf(inner + u"/2.csv"_s), "two");
    EXPECT_EQ(contentsOf(inner + u"/3.csv"_s), "");
}

TEST(FileSetTest, OneFileThatCannotBeWritten_ChangesNone)
{
    const QTemporaryDir folder;
    shoptools::writeFiles(folder.path(), {{u"1.csv"_s, "one"}});
    ASSERT_TRUE(
        QDir(folder.path()).mkdir(u"2.csv"_s)); // A folder with the name of the second file.
    EXPECT_THROW(shoptools::writeFiles(folder.path(), {{u"1.csv"_s, "new"}, {u"2.csv"_s, "two"}}),
                 runtime::RunTimeError);
    EXPECT_EQ(contentsOf(folder.filePath(u"1.csv"_s)), "one");
    EXPECT_EQ(filesIn(folder.path()), (QStringList{u"1.csv"_s, u"2.csv"_s}));
}

TEST(FileSetTest, FolderThatCannotBeCreated_IsNamed)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"file"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QString inner = file.fileName() + u"/inner"_s;
    try {
        shoptools::writeFiles(inner, {{u"1.csv"_s, "one"}});
        FAIL();
    } catch (const runtime::RunTimeError& error) {
        EXPECT_EQ(error.number(), runtime::PermissionDenied);
        EXPECT_TRUE(error.description().contains(inner));
    }
}

TEST(FileSetTest, FolderThatIsNotReadable_IsRefusedAtOnce)
{
    const QTemporaryDir folder;
    const testsupport::OrdinaryUser ordinary;
    const auto all = QFile::permissions(folder.path());
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::WriteOwner | QFile::ExeOwner));
    try {
        shoptools::writeFiles(folder.path(), {{u"1.csv"_s, "new"}});
        ADD_FAILURE();
    } catch (const runtime::RunTimeError& error) {
        EXPECT_EQ(error.description(),
                  u"Could not write '%1': the folder is not readable"_s.arg(folder.path()));
    }
    EXPECT_TRUE(QFile::setPermissions(folder.path(), all));
    EXPECT_TRUE(filesIn(folder.path()).isEmpty());
}

TEST(FileSetTest, LeftFileOfAKilledRun_IsRemoved)
{
    const QTemporaryDir folder;
    QFile left(folder.filePath(u".zomrel-store-left"_s));
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    left.close();
    shoptools::writeFiles(folder.path(), {{u"1.csv"_s, "one"}});
    EXPECT_EQ(filesIn(folder.path()), QStringList{u"1.csv"_s});
}

TEST(FileSetTest, FolderThatIsReadOnly_KeepsItsFiles)
{
    const QTemporaryDir folder;
    shoptools::writeFiles(folder.path(), {{u"1.csv"_s, "one"}});
    const testsupport::OrdinaryUser ordinary;
    const auto all = QFile::permissions(folder.path());
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_THROW(shoptools::requireWritable(folder.path()), runtime::RunTimeError);
    EXPECT_THROW(shoptools::requireWritable(folder.filePath(u"a/b"_s)), runtime::RunTimeError);
    EXPECT_THROW(shoptools::writeFiles(folder.path(), {{u"1.csv"_s, "new"}}),
                 runtime::RunTimeError);
    EXPECT_TRUE(QFile::setPermissions(folder.path(), all));
    EXPECT_EQ(contentsOf(folder.filePath(u"1.csv"_s)), "one");
}
