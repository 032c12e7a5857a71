#include "support/plain_sql.h"
#include "support/temporary_store.h"
#include "tools/store/program_run.h"

#include <QDir>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using storetooltest::contentsOf;
using storetooltest::Outcome;
using storetooltest::zomrelStore;
using testsupport::TemporaryStore;

namespace {

/// A delivered store, and a link to it in another folder.
class FileLinkTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(zomrelStore({u"create"_s, store()}).exitStatus, 0);
        ASSERT_EQ(zomrelStore(linkTo(store())).exitStatus, 0);
        text_ = contentsOf(link());
    }
    /// No command changes the link.
    void TearDown() override { EXPECT_EQ(contentsOf(link()), text_); }

    QString store() const { return data_.filePath(u"Aluminium.mdb"_s); }
    QString link() const { return program_.filePath(u"Aluminium.mdb"_s); }
    QString backup() const { return program_.filePath(u"backup.mdb"_s); }
    QStringList linkTo(const QString& path) const { return {u"link"_s, link(), u"--file"_s, path}; }
    int orders() const
    {
        testsupport::PlainSql sql(store());
        return sql.scalar(u"SELECT count(*) FROM Orders"_s).toInt();
    }
    void addOrder() const
    {
        testsupport::PlainSql sql(store());
        sql.exactly(
            u"INSERT INTO Orders (Number, Order_Date, Open_Close) VALUES (1, '2026-03-01', 0)"_s);
    }

private:
    QTemporaryDir data_;
    QTemporaryDir program_;
    QByteArray text_;
};

} // namespace

TEST_F(FileLinkTest, Link_NamesTheFile)
{
    EXPECT_EQ(contentsOf(link()), "Zomrel store link 1\nfile = " + store().toUtf8() + '\n');
}

TEST_F(FileLinkTest, Check_ReadsTheFile)
{
    EXPECT_EQ(zomrelStore({u"check"_s, link()}).exitStatus, 0);
    testsupport::PlainSql(store()).exactly(u"DROP TABLE Cuts"_s);
    const Outcome outcome = zomrelStore({u"check"_s, link()});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_TRUE(outcome.out.join(u'\n').contains(u"Cuts"_s))
        << outcome.out.join(u'\n').toStdString();
}

TEST_F(FileLinkTest, BackupAndRestore_CopyAndReplaceTheFile)
{
    addOrder();
    ASSERT_EQ(zomrelStore({u"backup"_s, link(), backup()}).exitStatus, 0);
    testsupport::PlainSql(store()).exactly(u"DELETE FROM Orders"_s);
    ASSERT_EQ(orders(), 0);
    const Outcome outcome = zomrelStore({u"restore"_s, backup(), link()});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    EXPECT_EQ(orders(), 1);
    EXPECT_TRUE(QFile::exists(store() + u".before-restore"_s));
    EXPECT_FALSE(QFile::exists(link() + u".before-restore"_s));
}

TEST_F(FileLinkTest, BackupOrCreateOntoALink_IsRefused)
{
    EXPECT_EQ(zomrelStore({u"backup"_s, store(), link()}).exitStatus, 1);
    EXPECT_EQ(zomrelStore({u"create"_s, link()}).exitStatus, 1);
}

TEST_F(FileLinkTest, MoveFromTheLink_CopiesTheFile)
{
    addOrder();
    const QString target = backup();
    const Outcome outcome = zomrelStore({u"move"_s, link(), target});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    EXPECT_EQ(testsupport::PlainSql(target).scalar(u"SELECT count(*) FROM Orders"_s).toInt(), 1);
}

TEST_F(FileLinkTest, MoveToTheLink_MakesTheMissingFile)
{
    addOrder();
    const QString away = backup();
    ASSERT_TRUE(QFile::rename(store(), away));
    const Outcome outcome = zomrelStore({u"move"_s, away, link()});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    EXPECT_EQ(orders(), 1);
    EXPECT_EQ(zomrelStore({u"move"_s, away, link()}).exitStatus, 1) << "the file exists now";
}

TEST_F(FileLinkTest, MissingFile_IsReportedByItsName)
{
    ASSERT_TRUE(QFile::remove(store()));
    for (const QStringList& command :
         {QStringList{u"check"_s, link()}, QStringList{u"backup"_s, link(), backup()}}) {
        const Outcome outcome = zomrelStore(command);
        EXPECT_EQ(outcome.exitStatus, 1);
        EXPECT_TRUE((outcome.out + outcome.err)
                        .join(u'\n')
                        .contains(u"Could not find file '%1'."_s.arg(store())));
    }
}

TEST_F(FileLinkTest, LinkToWhatIsNoStore_IsNotWritten)
{
    const QString other = backup();
    QFile file(other);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(8192, 'x'));
    file.close();
    for (const QString& target : {other, link(), store() + u".none"_s})
        EXPECT_EQ(zomrelStore(linkTo(target)).exitStatus, 1) << target.toStdString();
}

TEST_F(FileLinkTest, OptionsThatExcludeEachOther_AreAWrongCall)
{
    const QStringList both = linkTo(store()) + QStringList{u"--server"_s, u"h"_s};
    EXPECT_EQ(zomrelStore(both).exitStatus, 2);
    EXPECT_EQ(zomrelStore(both).err.value(0),
              u"zomrel-store: link takes either --file or --server"_s);
    EXPECT_EQ(zomrelStore(linkTo(u"Aluminium.mdb"_s)).exitStatus, 2) << "a relative path";
    EXPECT_EQ(zomrelStore(linkTo(QString())).exitStatus, 2);
}
