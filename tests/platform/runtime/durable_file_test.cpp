#include "platform/runtime/durable_file.h"

#include "platform/runtime/run_time_error.h"
#include "support/errors.h"
#include "support/printers.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class DurableFileTest : public testing::Test
{
protected:
    QString at(const QString& name) const { return folder_.filePath(name); }
    static void write(const QString& path, const QByteArray& contents)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(contents), contents.size());
    }
    static QByteArray contentsOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("not there");
    }
    QStringList files() const
    {
        return QDir(folder_.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    QTemporaryDir folder_;
};

} // namespace

TEST_F(DurableFileTest, CreateFile_underATakenName_returnsFalse)
{
    write(at(u"taken"_s), "kept");
    QFile file;
    EXPECT_FALSE(runtime::createFile(file, at(u"taken"_s), runtime::Readers::OnlyOwner));
    EXPECT_EQ(contentsOf(at(u"taken"_s)), "kept");
}

TEST_F(DurableFileTest, CreateFile_whereASymbolicLinkLies_doesNotFollowIt)
{
    write(at(u"precious"_s), "kept");
    ASSERT_TRUE(QFile::link(at(u"precious"_s), at(u"trap"_s)));
    ASSERT_TRUE(QFile::link(at(u"absent"_s), at(u"trap2"_s)));
    QFile file;
    EXPECT_FALSE(runtime::createFile(file, at(u"trap"_s), runtime::Readers::OnlyOwner));
    EXPECT_FALSE(runtime::createFile(file, at(u"trap2"_s), runtime::Readers::OnlyOwner));
    EXPECT_EQ(contentsOf(at(u"precious"_s)), "kept");
    EXPECT_FALSE(QFile::exists(at(u"absent"_s)));
}

TEST_F(DurableFileTest, CreateFile_inAMissingFolder_throwsPermissionDenied)
{
    QFile file;
    EXPECT_EQ(testsupport::errorOf(
                  [&] { runtime::createFile(file, at(u"no/file"_s), runtime::Readers::AsUsual); }),
              runtime::PermissionDenied);
}

TEST_F(DurableFileTest, UnnamedFile_isNotListedBeforeItHasAName)
{
    QFile file;
    if (!runtime::createUnnamedFile(file, folder_.path(), runtime::Readers::AsUsual))
        GTEST_SKIP() << "The file system has no files without a name.";
    file.write("contents");
    runtime::syncFile(file, at(u"final"_s));
    EXPECT_EQ(files(), QStringList());
    write(at(u"taken"_s), "before");
    EXPECT_FALSE(runtime::nameFile(file, at(u"taken"_s)));
    EXPECT_EQ(contentsOf(at(u"taken"_s)), "before");
    EXPECT_TRUE(runtime::nameFile(file, at(u"final"_s)));
    EXPECT_EQ(contentsOf(at(u"final"_s)), "contents");
    runtime::replaceFile(at(u"final"_s), at(u"taken"_s));
    EXPECT_EQ(contentsOf(at(u"taken"_s)), "contents");
    EXPECT_EQ(files(), QStringList{u"taken"_s});
}

TEST_F(DurableFileTest, DurableRename_toAFreeName_movesTheFile)
{
    QFile file;
    ASSERT_TRUE(runtime::createFile(file, at(u"new"_s), runtime::Readers::OnlyOwner));
    file.write("contents");
    runtime::durableRename(file, at(u"new"_s), at(u"final"_s), runtime::Existing::Refuse);
    file.close();
    EXPECT_EQ(contentsOf(at(u"final"_s)), "contents");
    EXPECT_EQ(files(), QStringList{u"final"_s});
}

TEST_F(DurableFileTest, DurableRename_toATakenName_replacesOrRefusesIt)
{
    write(at(u"final"_s), "before");
    QFile file;
    ASSERT_TRUE(runtime::createFile(file, at(u"new"_s), runtime::Readers::OnlyOwner));
    file.write("after");
    EXPECT_EQ(testsupport::errorOf([&] {
                  runtime::durableRename(file, at(u"new"_s), at(u"final"_s),
                                         runtime::Existing::Refuse);
              }),
              runtime::DatabaseExists);
    EXPECT_EQ(contentsOf(at(u"final"_s)), "before");
    runtime::durableRename(file, at(u"new"_s), at(u"final"_s), runtime::Existing::Replace);
    file.close();
    EXPECT_EQ(contentsOf(at(u"final"_s)), "after");
    EXPECT_EQ(files(), QStringList{u"final"_s});
}

TEST_F(DurableFileTest, DurableRename_toTheNameOfAnOpenFile_replacesIt)
{
    write(at(u"final"_s), "before");
    QFile reader;
    ASSERT_TRUE(runtime::openForReading(reader, at(u"final"_s)));
    QFile file;
    ASSERT_TRUE(runtime::createFile(file, at(u"new"_s), runtime::Readers::OnlyOwner));
    file.write("after");
    runtime::durableRename(file, at(u"new"_s), at(u"final"_s), runtime::Existing::Replace);
    file.close();
    EXPECT_EQ(contentsOf(at(u"final"_s)), "after");
    EXPECT_EQ(reader.readAll(), "before");
    reader.close();
    EXPECT_EQ(files(), QStringList{u"final"_s});
}

TEST_F(DurableFileTest, RemoveIfLeft_removesOnlyWhatIsNotInUse)
{
    const QString path = at(u"file"_s);
    {
        QFile file;
        ASSERT_TRUE(runtime::createFile(file, path, runtime::Readers::OnlyOwner));
        runtime::removeIfLeft(path);
        EXPECT_TRUE(QFile::exists(path));
    }
    runtime::removeIfLeft(path);
    EXPECT_FALSE(QFile::exists(path));

    const QString folder = at(u"folder"_s);
    ASSERT_TRUE(runtime::createFolder(folder));
    write(folder + u"/inside"_s, "text");
    {
        const runtime::FolderMark mark(folder);
        EXPECT_TRUE(mark.isValid());
        EXPECT_FALSE(runtime::FolderMark(folder).isValid());
        runtime::removeIfLeft(folder);
        EXPECT_TRUE(QFile::exists(folder + u"/inside"_s));
    }
    runtime::removeIfLeft(folder);
    EXPECT_FALSE(QFile::exists(folder));
}

#ifdef Q_OS_UNIX // Ordinary users of Windows cannot make symbolic links.
TEST_F(DurableFileTest, RemoveIfLeft_doesNotFollowASymbolicLink)
{
    write(at(u"precious"_s), "kept");
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"folder"_s));
    write(at(u"folder/inside"_s), "kept");
    for (const QString& target : {at(u"precious"_s), at(u"folder"_s)}) {
        ASSERT_TRUE(QFile::link(target, at(u"trap"_s)));
        runtime::removeIfLeft(at(u"trap"_s));
        EXPECT_TRUE(QFile::remove(at(u"trap"_s)));
    }
    EXPECT_EQ(contentsOf(at(u"precious"_s)), "kept");
    EXPECT_EQ(contentsOf(at(u"folder/inside"_s)), "kept");
}

TEST_F(DurableFileTest, FollowLinks_givesTheLastName)
{
    write(at(u"file"_s), "");
    ASSERT_TRUE(QFile::link(u"file"_s, at(u"one"_s)));
    ASSERT_TRUE(QFile::link(at(u"one"_s), at(u"two"_s)));
    ASSERT_TRUE(QFile::link(at(u"absent"_s), at(u"three"_s)));
    ASSERT_TRUE(QFile::link(at(u"circle"_s), at(u"circle"_s)));
    EXPECT_EQ(runtime::followLinks(at(u"file"_s)), at(u"file"_s));
    EXPECT_EQ(runtime::followLinks(at(u"two"_s)), at(u"file"_s));
    EXPECT_EQ(runtime::followLinks(at(u"three"_s)), at(u"absent"_s));
    EXPECT_EQ(testsupport::errorOf([&] { runtime::followLinks(at(u"circle"_s)); }),
              runtime::PermissionDenied);
}

TEST_F(DurableFileTest, KeepAccess_withoutTheAccessControlList_givesTheGroupNoMoreThanEverybody)
{
    QFile file;
    ASSERT_TRUE(runtime::createFile(file, at(u"copy"_s), runtime::Readers::OnlyOwner));
    runtime::FileAccess access = runtime::accessOf(at(u"copy"_s));
    access.mode = 0664;
    EXPECT_TRUE(runtime::keepAccess(file, access));
    EXPECT_EQ(runtime::accessOf(at(u"copy"_s)).mode, 0664U);
    access.list = "This is no access control list, so the system refuses it.";
    EXPECT_FALSE(runtime::keepAccess(file, access));
    EXPECT_EQ(runtime::accessOf(at(u"copy"_s)).mode, 0644U);
}
#endif
