#include "platform/runtime/library_paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

const QFile::Permissions ownerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

/// A folder "top/plugins/platforms" with the file "one.so", which nobody else can change.
class TrustedFolderTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir().mkpath(plugins() + u"/platforms"_s));
        QFile file(plugin());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        for (const QString& each : {top(), plugins(), plugins() + u"/platforms"_s, plugin()})
            ASSERT_TRUE(QFile::setPermissions(each, ownerOnly));
        if (!runtime::isTrustedFolder(folder_.path()))
            GTEST_SKIP() << "others can change the temporary folder of this machine";
    }

    QString top() const { return folder_.filePath(u"top"_s); }
    QString plugins() const { return top() + u"/plugins"_s; }
    QString plugin() const { return plugins() + u"/platforms/one.so"_s; }

private:
    QTemporaryDir folder_;
};

} // namespace

TEST_F(TrustedFolderTest, FolderOfTheUserAlone_IsTrusted)
{
    EXPECT_TRUE(runtime::isTrustedFolder(plugins()));
}

TEST_F(TrustedFolderTest, MissingFolder_IsNotTrusted)
{
    EXPECT_FALSE(runtime::isTrustedFolder(top() + u"/none"_s));
}

TEST_F(TrustedFolderTest, FolderThatAnyoneCanWriteTo_IsNotTrusted)
{
    QFile::setPermissions(plugins(), ownerOnly | QFile::WriteOther);
    EXPECT_FALSE(runtime::isTrustedFolder(plugins()));
}

TEST_F(TrustedFolderTest, FolderThatAGroupCanWriteTo_IsNotTrusted)
{
    QFile::setPermissions(plugins(), ownerOnly | QFile::WriteGroup);
    EXPECT_FALSE(runtime::isTrustedFolder(plugins()));
}

TEST_F(TrustedFolderTest, FileInsideThatAnyoneCanWriteTo_IsNotTrusted)
{
    QFile::setPermissions(plugin(), ownerOnly | QFile::WriteOther);
    EXPECT_FALSE(runtime::isTrustedFolder(plugins()));
}

TEST_F(TrustedFolderTest, ParentThatAnyoneCanWriteTo_IsNotTrusted)
{
    QFile::setPermissions(top(), ownerOnly | QFile::WriteOther);
    EXPECT_FALSE(runtime::isTrustedFolder(plugins()));
}

TEST_F(TrustedFolderTest, LinkToAFolder_IsJudgedByTheFolder)
{
    const QString link = top() + u"/link"_s;
    ASSERT_TRUE(QFile::link(plugins(), link));
    EXPECT_TRUE(runtime::isTrustedFolder(link));
    QFile::setPermissions(plugins(), ownerOnly | QFile::WriteOther);
    EXPECT_FALSE(runtime::isTrustedFolder(link));
}

#ifdef Q_OS_UNIX
TEST_F(TrustedFolderTest, FileOfAnotherUser_IsNotTrusted)
{
    constexpr uid_t another = 12345;
    if (::chown(QFile::encodeName(plugin()).constData(), another, another) != 0)
        GTEST_SKIP() << "only the administrator can give a file away";
    EXPECT_FALSE(runtime::isTrustedFolder(plugins()));
}
#endif

TEST(LibraryPathsTest, OnlyFileSystemsThatKeepPermissions_AreTrusted)
{
    for (const auto* each : {"ext4", "xfs", "btrfs", "tmpfs", "overlay", "nfs4"})
        EXPECT_TRUE(runtime::keepsPermissions(each)) << each;
    for (const auto* each :
         {"cifs", "smb3", "vfat", "exfat", "ntfs", "fuseblk", "9p", "vboxsf", ""})
        EXPECT_FALSE(runtime::keepsPermissions(each)) << each;
}
