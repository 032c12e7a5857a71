#include "platform/dao/database.h"
#include "platform/dao/engine/link.h"
#include "platform/runtime/run_time_error.h"
#include "support/printers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// The folder "program" with a link, and the folder "data" for the store that it names.
class FileLinkTest : public testing::Test
{
protected:
    FileLinkTest()
    {
        folder_.isValid();
        QDir(folder_.path()).mkpath(u"program"_s);
        QDir(folder_.path()).mkpath(u"data"_s);
    }
    ~FileLinkTest() override { dao::DBEngine::instance().Idle(); }

    QString link() const { return folder_.filePath(u"program/Aluminium.mdb"_s); }
    QString store() const { return folder_.filePath(u"data/Aluminium.mdb"_s); }

    static void writeLink(const QString& path, const QString& target)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(dao::linkText(dao::Link::toFile(target)));
    }
    void makeStore() const
    {
        const auto database = dao::DBEngine::instance().Workspaces(0).CreateDatabase(store());
        dao::TableDef table = database->CreateTableDef(u"Notes"_s);
        table.Fields().Append(table.CreateField(u"Text"_s, dao::dbText, 20));
        database->tableDefs().Append(table);
    }
    /// Opens the store through the link and returns the error; 0 for none.
    int openingError(QString& description) const
    {
        try {
            dao::DBEngine::instance().OpenDatabase(link());
        } catch (const runtime::RunTimeError& error) {
            description = error.description();
            return error.number();
        }
        return 0;
    }

private:
    QTemporaryDir folder_;
};

} // namespace

TEST_F(FileLinkTest, rowsAddedThroughTheLink_areInTheFile)
{
    makeStore();
    writeLink(link(), store());
    const QByteArray before = [this] {
        QFile file(link());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }();
    const auto through = dao::DBEngine::instance().OpenDatabase(link());
    EXPECT_EQ(through->place(), store());
    const auto rows = through->OpenRecordset(u"Notes"_s, dao::dbOpenTable);
    rows->AddNew();
    rows->Fields(u"Text"_s).SetValue(u"one"_s);
    rows->Update();
    const auto direct = dao::DBEngine::instance().OpenDatabase(store());
    EXPECT_EQ(direct->OpenRecordset(u"Notes"_s, dao::dbOpenTable)->RecordCount(), 1);
    QFile file(link());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), before);
}

TEST_F(FileLinkTest, transactionThroughTheLink_locksTheFile)
{
    makeStore();
    writeLink(link(), store());
    dao::Workspace& workspace = dao::DBEngine::instance().Workspaces(0);
    const auto through = workspace.OpenDatabase(link());
    through->BeginTrans();
    // Opening the store again reads the link and must leave the lock in place.
    const auto other = workspace.OpenDatabase(link());
    EXPECT_EQ(other->place(), store());
    dao::Workspace impatient;
    impatient.setLockWait(std::chrono::milliseconds(10));
    const auto direct = impatient.OpenDatabase(store());
    EXPECT_THROW(direct->BeginTrans(), runtime::RunTimeError);
    through->Rollback();
}

TEST_F(FileLinkTest, missingFile_isReportedByItsName)
{
    writeLink(link(), store());
    QString description;
    EXPECT_EQ(openingError(description), 3024);
    EXPECT_EQ(description, u"Could not find file '%1'."_s.arg(store()));
    EXPECT_FALSE(QFileInfo::exists(store()));
}

TEST_F(FileLinkTest, fileThatIsNoStore_isReportedByItsName)
{
    writeLink(link(), store());
    QFile file(store());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(8192, 'x'));
    file.close();
    QString description;
    EXPECT_EQ(openingError(description), 3343);
    EXPECT_TRUE(description.contains(store())) << description.toStdString();
}

TEST_F(FileLinkTest, linkToALink_isRefused)
{
    makeStore();
    writeLink(link(), link() + u".second"_s);
    writeLink(link() + u".second"_s, store());
    QString description;
    EXPECT_EQ(openingError(description), 3343);
    EXPECT_EQ(description,
              u"The store link '%1' is damaged: it names '%1.second', which is a link, too."_s.arg(
                  link()));
}

TEST_F(FileLinkTest, linkToItself_isRefused)
{
    writeLink(link(), link());
    QString description;
    EXPECT_EQ(openingError(description), 3343);
}
