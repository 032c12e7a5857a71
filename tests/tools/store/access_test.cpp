#include "support/ordinary_user.h"
#include "support/plain_sql.h"
#include "support/printers.h"
#include "support/temporary_store.h"
#include "tools/store/program_run.h"

#include <QDir>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using storetooltest::contentsOf;
using storetooltest::Outcome;
using storetooltest::zomrelStore;
using testsupport::TemporaryStore;

namespace {

constexpr uid_t stationUser = 12345;
constexpr gid_t stationGroup = 12346;

/// Owner, group and permissions of the files that the commands create.
class AccessTest : public testing::Test
{
protected:
    void SetUp() override { formerMask_ = umask(022); }
    void TearDown() override { umask(formerMask_); }

    QString at(const QString& name) const { return store_.folder() + u'/' + name; }
    static struct stat statusOf(const QString& path)
    {
        struct stat status = {};
        EXPECT_EQ(stat(QFile::encodeName(path).constData(), &status), 0);
        return status;
    }
    static unsigned modeOf(const QString& path) { return statusOf(path).st_mode & 07777U; }
    void setMode(mode_t mode) const
    {
        ASSERT_EQ(chmod(QFile::encodeName(store_.path()).constData(), mode), 0);
    }
    /// Gives the store to the station's user and group.
    void giveAway() const
    {
        ASSERT_EQ(chown(QFile::encodeName(store_.path()).constData(), stationUser, stationGroup),
                  0);
    }
    Outcome backUp() const { return zomrelStore({u"backup"_s, store_.path(), backup_}); }
    Outcome restore(const QString& place) const
    {
        return zomrelStore({u"restore"_s, backup_, place});
    }

    static int ordersIn(const QString& path)
    {
        return testsupport::PlainSql(path).scalar(u"SELECT count(*) FROM Orders"_s).toInt();
    }

    TemporaryStore store_;
    QString backup_ = at(u"copy.mdb"_s);

private:
    mode_t formerMask_ = 0;
};

} // namespace

TEST_F(AccessTest, Backup_isNotMoreReadableThanItsSource)
{
    for (const auto& [source, expected] : {std::pair(0600U, 0600U), std::pair(0640U, 0640U),
                                           std::pair(0664U, 0644U), std::pair(0700U, 0600U)}) {
        setMode(source);
        ASSERT_EQ(backUp().exitStatus, 0);
        EXPECT_EQ(modeOf(backup_), expected);
        QFile::remove(backup_);
    }
}

TEST_F(AccessTest, BackupByAUserWithoutTheSourcesGroup_isNotReadableForAnotherGroup)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a file to another group";
    ASSERT_EQ(chown(QFile::encodeName(store_.path()).constData(), geteuid(), stationGroup), 0);
    setMode(0660);
    {
        const testsupport::OrdinaryUser user;
        ASSERT_EQ(backUp().exitStatus, 0);
    }
    EXPECT_NE(statusOf(backup_).st_gid, stationGroup);
    EXPECT_EQ(modeOf(backup_), 0600U);
}

TEST_F(AccessTest, BackupByRoot_hasTheSourcesGroup)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a file to another group";
    giveAway();
    setMode(0660);
    ASSERT_EQ(backUp().exitStatus, 0);
    EXPECT_EQ(statusOf(backup_).st_gid, stationGroup);
    EXPECT_EQ(modeOf(backup_), 0640U);
}

TEST_F(AccessTest, RestoreByRoot_keepsOwnerGroupAndPermissions)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a file to another user";
    ASSERT_EQ(backUp().exitStatus, 0);
    giveAway();
    setMode(0660);
    const Outcome outcome = restore(store_.path());
    ASSERT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.out.size(), 2);
    for (const QString& path : {store_.path(), at(u"Aluminium.mdb.before-restore"_s)}) {
        EXPECT_EQ(statusOf(path).st_uid, stationUser);
        EXPECT_EQ(statusOf(path).st_gid, stationGroup);
        EXPECT_EQ(modeOf(path), 0660U);
    }
}

TEST_F(AccessTest, RestoreByAnotherUser_saysThatTheOwnerIsNotKept)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a file to another user";
    ASSERT_EQ(backUp().exitStatus, 0);
    giveAway();
    setMode(0666);
    const testsupport::OrdinaryUser user;
    const Outcome outcome = restore(store_.path());
    ASSERT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    EXPECT_EQ(
        outcome.out.value(2),
        u"the owner, group or access control list of %1 could not be kept; stations may need it"_s
            .arg(store_.path()));
    EXPECT_EQ(modeOf(store_.path()), 0666U);
}

TEST_F(AccessTest, RestoreToANewPlace_isNotMoreReadableThanTheBackup)
{
    setMode(0600);
    ASSERT_EQ(backUp().exitStatus, 0);
    ASSERT_EQ(restore(at(u"new.mdb"_s)).exitStatus, 0);
    EXPECT_EQ(modeOf(at(u"new.mdb"_s)), 0600U);
}

TEST_F(AccessTest, RestoreOntoASymbolicLink_replacesTheFileItNames)
{
    ASSERT_EQ(backUp().exitStatus, 0);
    store_.addOrder(1);
    ASSERT_TRUE(QDir(store_.folder()).mkdir(u"links"_s));
    const QString link = at(u"links/Aluminium.mdb"_s);
    ASSERT_TRUE(QFile::link(u"../Aluminium.mdb"_s, link));
    const Outcome outcome = restore(link);
    ASSERT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(ordersIn(store_.path()), 0);
    EXPECT_EQ(ordersIn(at(u"Aluminium.mdb.before-restore"_s)), 1);
    EXPECT_EQ(
        QDir(at(u"links"_s)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList{u"Aluminium.mdb"_s});
}

TEST_F(AccessTest, RestoreOntoASymbolicLinkToNothing_createsTheFileItNames)
{
    store_.addOrder(1);
    ASSERT_EQ(backUp().exitStatus, 0);
    const QString link = at(u"link.mdb"_s);
    ASSERT_TRUE(QFile::link(at(u"new.mdb"_s), link));
    ASSERT_EQ(restore(link).exitStatus, 0);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(ordersIn(at(u"new.mdb"_s)), 1);
}
