#include "support/throwaway_server.h"
#include "tools/store/old_store/stored_rows.h"

using namespace Qt::StringLiterals;
using storetooltest::contentsOf;
using storetooltest::listedRows;
using storetooltest::oldFile;
using storetooltest::Outcome;
using storetooltest::rowsOf;
using storetooltest::zomrelStore;

namespace {

class TakeOverOnServerTest : public testing::Test
{
protected:
    TakeOverOnServerTest() { database_.writeLink(link_); }

    Outcome takeOver(const QString& old) const { return zomrelStore({u"import"_s, old, link_}); }
    int tables() const
    {
        return dao::DBEngine::instance().OpenDatabase(link_)->tableDefs().Count();
    }

    testsupport::ThrowawayDatabase database_;
    QTemporaryDir folder_;
    QString link_ = folder_.filePath(u"link.mdb"_s);
};

} // namespace

TEST_F(TakeOverOnServerTest, ImportsEveryRow)
{
    const Outcome outcome = takeOver(oldFile(u"old-store.mdb"_s));
    ASSERT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    EXPECT_EQ(outcome.err, QStringList());
    for (const store::TableSchema& table : store::schema())
        EXPECT_EQ(rowsOf(link_, table.name), listedRows(u"old-store.rows.tsv"_s, table.name));
    const Outcome checked = zomrelStore({u"check"_s, link_});
    EXPECT_EQ(checked.exitStatus, 0) << checked.out.join(u'\n').toStdString();
}

TEST_F(TakeOverOnServerTest, ContinuesTheCounters)
{
    ASSERT_EQ(takeOver(oldFile(u"old-store.mdb"_s)).exitStatus, 0);
    const auto database = dao::DBEngine::instance().OpenDatabase(link_);
    const auto kinds = database->OpenRecordset(u"MashkofKind"_s, dao::dbOpenTable);
    kinds->AddNew();
    kinds->Fields(u"Name"_s).SetValue(u"חדש"_s);
    kinds->Update();
    kinds->MoveLast();
    EXPECT_EQ(kinds->Fields(u"Code"_s).Value(), 6);
}

TEST_F(TakeOverOnServerTest, InvalidValueLeavesTheDatabaseEmpty)
{
    QByteArray file = contentsOf(oldFile(u"older-store.mdb"_s));
    file.replace(file.indexOf(QByteArray("\xd0\x05").repeated(50)), 2, "\xff\xfe");
    const storetooltest::OldFileFolder old;
    old.write(file);
    const Outcome outcome = takeOver(old.old());
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err.last(), u"zomrel-store: nothing was imported"_s);
    EXPECT_EQ(tables(), 0);
}

TEST_F(TakeOverOnServerTest, DamagedFileLeavesTheDatabaseEmpty)
{
    const QByteArray file = contentsOf(oldFile(u"older-store.mdb"_s));
    const storetooltest::OldFileFolder old;
    old.write(file.left(file.size() * 7 / 8));
    EXPECT_EQ(takeOver(old.old()).exitStatus, 1);
    EXPECT_EQ(tables(), 0);
}

TEST_F(TakeOverOnServerTest, RefusesADatabaseWithAStore)
{
    ASSERT_EQ(takeOver(oldFile(u"older-store.mdb"_s)).exitStatus, 0);
    const Outcome again = takeOver(oldFile(u"old-store.mdb"_s));
    EXPECT_EQ(again.exitStatus, 1);
    ASSERT_EQ(again.err.size(), 1);
    EXPECT_TRUE(again.err.first().startsWith(u"zomrel-store: There is a store already in "_s))
        << again.err.first().toStdString();
    EXPECT_EQ(rowsOf(link_, u"Cuts"_s), listedRows(u"older-store.rows.tsv"_s, u"Cuts"_s));
}
