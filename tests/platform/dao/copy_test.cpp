#include "platform/dao/examination.h"
#include "platform/dao/fixture.h"

#include <QFile>

#include <csignal>
#include <sys/resource.h>

using namespace daotest;

namespace {

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

/// Copies an embedded store.
class CopyTest : public ItemsTest
{
protected:
    void SetUp() override
    {
        ItemsTest::SetUp();
        for (int i = 1; i <= rowCount; ++i)
            add(i, i, u"before"_s);
        ASSERT_TRUE(target_.isValid());
    }

    QString target() const { return target_.filePath(u"Copy.mdb"_s); }
    int copy() const
    {
        return errorOf([this] { open()->CopyTo(target()); });
    }
    /// Returns the number of rows with this name in a store, or -1 if the store is damaged.
    static int rowsNamed(const QString& path, const QString& name)
    {
        const auto store = dao::DBEngine::instance().OpenDatabase(path);
        if (!dao::engineFindings(*store).isEmpty())
            return -1;
        int count = 0;
        dao::examineRows(*store, u"Items"_s, [&](const dao::ExaminedRow& row) {
            count += row.values[2] == name ? 1 : 0;
        });
        return count;
    }
    QStringList leftBehind() const
    {
        return QDir(target_.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    static constexpr int rowCount = 500;
    QTemporaryDir target_;
};

TEST_F(CopyTest, copy_containsAllRows)
{
    raw_.reset();
    ASSERT_EQ(copy(), 0);
    EXPECT_EQ(contentsOf(target()), contentsOf(path_));
    EXPECT_EQ(rowsNamed(target(), u"before"_s), rowCount);
    EXPECT_EQ(leftBehind(), QStringList{u"Copy.mdb"_s});
}

TEST_F(CopyTest, existingFile_isReplaced)
{
    write(target(), QByteArray(100000, 'x'));
    ASSERT_EQ(copy(), 0);
    EXPECT_EQ(rowsNamed(target(), u"before"_s), rowCount);
}

TEST_F(CopyTest, copy_isIndependentOfTheStore)
{
    ASSERT_EQ(copy(), 0);
    sql(u"UPDATE Items SET Name = 'after'"_s);
    EXPECT_EQ(rowsNamed(target(), u"before"_s), rowCount);
    EXPECT_EQ(rowsNamed(path_, u"after"_s), rowCount);
}

TEST_F(CopyTest, changeInProgress_isNotCopied)
{
    sql(u"BEGIN IMMEDIATE"_s);
    sql(u"UPDATE Items SET Name = 'after' WHERE Code <= 10"_s);
    ASSERT_EQ(copy(), 0);
    EXPECT_EQ(rowsNamed(target(), u"before"_s), rowCount);
}

TEST_F(CopyTest, lockedStore_failsAfterTheLockWait)
{
    write(target(), "kept");
    sql(u"BEGIN EXCLUSIVE"_s);
    EXPECT_EQ(copy(), 3260);
    EXPECT_EQ(contentsOf(target()), "kept");
    EXPECT_EQ(leftBehind(), QStringList{u"Copy.mdb"_s});
}

/// A part of a change has been written to the file, and the rollback journal exists.
TEST_F(CopyTest, interruptedChange_isNotCopied)
{
    sql(u"PRAGMA cache_size = 1"_s);
    sql(u"BEGIN IMMEDIATE"_s);
    sql(u"UPDATE Items SET Name = 'after', Note = hex(randomblob(400))"_s);
    const QString cutOff = target_.filePath(u"CutOff.mdb"_s);
    write(cutOff, contentsOf(path_));
    write(cutOff + u"-journal"_s, contentsOf(path_ + u"-journal"_s));
    ASSERT_GT(QFile(cutOff + u"-journal"_s).size(), 0);
    sql(u"ROLLBACK"_s);
    ASSERT_TRUE(contentsOf(cutOff).contains("after"));

    EXPECT_EQ(errorOf([&] { dao::DBEngine::instance().OpenDatabase(cutOff)->CopyTo(target()); }),
              0);
    EXPECT_FALSE(contentsOf(target()).contains("after"));
    EXPECT_EQ(rowsNamed(target(), u"before"_s), rowCount);
    EXPECT_EQ(rowsNamed(cutOff, u"before"_s), rowCount);
}

/// With a write-ahead log, the latest changes are not in the store file.
TEST_F(CopyTest, storeWithAWriteAheadLog_isRefused)
{
    ASSERT_EQ(scalar(u"PRAGMA journal_mode = WAL"_s).toString(), u"wal"_s);
    sql(u"UPDATE Items SET Name = 'after'"_s);
    sql(u"BEGIN"_s);
    sql(u"SELECT count(*) FROM Items"_s);
    EXPECT_EQ(copy(), 3260);
    EXPECT_EQ(leftBehind(), QStringList());
    sql(u"ROLLBACK"_s);
    raw_.reset();
    dao::DBEngine::instance().Idle(); // After this, the next opening can remove the log.
    EXPECT_EQ(copy(), 0);
    EXPECT_EQ(rowsNamed(target(), u"after"_s), rowCount);
}

TEST_F(CopyTest, targetThatCannotBeWritten_throwsAnError)
{
    const auto copiedTo = [this](const QString& path) {
        return errorOf([&] { open()->CopyTo(path); });
    };
    EXPECT_EQ(copiedTo(target_.filePath(u"no/such/folder.mdb"_s)), 3051);
    EXPECT_EQ(copiedTo(target_.path()), 3051);
    EXPECT_EQ(leftBehind(), QStringList());
    EXPECT_EQ(rowsNamed(path_, u"before"_s), rowCount);
}

TEST_F(CopyTest, failedCopy_leavesNoFile)
{
    write(target(), "kept");
    rlimit former{};
    getrlimit(RLIMIT_FSIZE, &former);
    rlimit limit = former;
    limit.rlim_cur = 8192;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    const int error = copy();
    setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(error, 3043);
    EXPECT_EQ(contentsOf(target()), "kept");
    EXPECT_EQ(leftBehind(), QStringList{u"Copy.mdb"_s});
}

TEST_F(CopyTest, closedStore_throwsAnError)
{
    const auto store = open();
    store->Close();
    EXPECT_EQ(errorOf([&] { store->CopyTo(target()); }), 3420);
    EXPECT_EQ(leftBehind(), QStringList());
}

} // namespace
