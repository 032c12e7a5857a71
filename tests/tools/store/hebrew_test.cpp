// What the commands print in Hebrew, and that it is the same message as in English.

#include "support/printers.h"
#include "support/temporary_store.h"
#include "tools/store/hebrew_run.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using storetooltest::bareLatin;
using storetooltest::expectHebrew;
using storetooltest::hasHebrew;
using storetooltest::named;
using storetooltest::run;
using storetooltest::runInHebrew;
using storetooltest::Said;
using testsupport::TemporaryStore;

namespace {

/// Stores and folders for calls that fail.
class HebrewTest : public testing::Test
{
protected:
    void SetUp() override
    {
        incomplete_.execute(u"DROP TABLE KanafKind"_s);
        QFile damaged(at(u"damaged.mdb"_s));
        ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
        damaged.write("ZOMREL STORE LINK 1\nserver\n");
    }
    QString at(const QString& name) const { return folder_.filePath(name); }

    QList<QStringList> wrongCalls() const
    {
        const QString file = at(u"new.mdb"_s);
        return {
            {},
            {u"destroy"_s},
            {u"create"_s},
            {u"check"_s, u"--figures"_s},
            {u"backup"_s, file},
            {u"backup"_s, u"--daily"_s, u"--status"_s, file},
            {u"restore"_s, file},
            {u"import"_s, file},
            {u"import"_s, file, file, u"--code-page"_s},
            {u"import"_s, file, file, u"--code-page"_s, u"x"_s},
            {u"move"_s, file},
            {u"link"_s, file},
            {u"link"_s, file, u"--file"_s, u"relative.mdb"_s},
            {u"link"_s, file, u"--file"_s, file, u"--server"_s, u"host"_s},
            {u"link"_s, file, u"--server"_s, u"host:x"_s, u"--database"_s, u"d"_s, u"--user"_s,
             u"u"_s},
            {u"server-setup"_s, u"more"_s},
            {u"server-setup"_s, u"--station"_s, u"a b"_s},
            {u"history"_s, u"x"_s},
        };
    }
    QList<QStringList> failingCalls() const
    {
        const QString absent = at(u"absent.mdb"_s);
        const QString file = at(u"new.mdb"_s);
        return {
            {u"create"_s, store_.path()},
            {u"create"_s, at(u"no folder/new.mdb"_s)},
            {u"check"_s, absent},
            {u"check"_s, incomplete_.path()},
            {u"check"_s, at(u"damaged.mdb"_s)},
            {u"backup"_s, absent, file},
            {u"backup"_s, incomplete_.path(), file},
            {u"backup"_s, store_.path(), store_.path()},
            {u"backup"_s, u"--daily"_s, store_.path(), at(u"no folder"_s)},
            {u"backup"_s, u"--daily"_s, incomplete_.path(), folder_.path()},
            {u"backup"_s, u"--status"_s, folder_.path()},
            {u"restore"_s, absent, file},
            {u"restore"_s, incomplete_.path(), file},
            {u"import"_s, absent, file},
            {u"import"_s, store_.path(), file},
            {u"move"_s, incomplete_.path(), file},
            {u"move"_s, store_.path(), store_.path()},
            {u"move"_s, u"postgresql://x:y@server/z"_s, file},
            {u"link"_s, store_.path(), u"--file"_s, store_.path()},
            {u"link"_s, at(u"link.mdb"_s), u"--file"_s, absent},
            {u"history"_s, u"1"_s, u"--store"_s, store_.path()},
        };
    }

    TemporaryStore store_;
    TemporaryStore incomplete_;
    QTemporaryDir folder_;
};

} // namespace

TEST_F(HebrewTest, HelpIsHebrewAndNamesTheSameCalls)
{
    const Said english = run({u"--help"_s});
    const Said hebrew = runInHebrew({u"--help"_s});
    EXPECT_EQ(english.exitStatus, 0);
    EXPECT_EQ(hebrew.exitStatus, 0);
    EXPECT_FALSE(hasHebrew(english.out));
    ASSERT_EQ(english.lines().size(), hebrew.lines().size());
    for (const QString& line : hebrew.lines()) {
        EXPECT_TRUE(hasHebrew(line)) << line.toStdString();
        EXPECT_EQ(bareLatin(line), QString()) << line.toStdString();
    }
    constexpr qsizetype column = 39;
    for (qsizetype i = 1; i + 2 < english.lines().size(); ++i)
        EXPECT_EQ(hebrew.plainLines()[i].left(column), english.lines()[i].left(column));
}

TEST_F(HebrewTest, WrongCalls_areRefusedInTheUsersLanguage)
{
    for (const QStringList& call : wrongCalls()) {
        const Said english = run(call);
        EXPECT_EQ(english.exitStatus, 2) << named(call, english);
        EXPECT_FALSE(hasHebrew(english.err)) << named(call, english);
        const Said hebrew = runInHebrew(call);
        EXPECT_EQ(hebrew.exitStatus, 2) << named(call, hebrew);
        expectHebrew(call, hebrew);
    }
}

TEST_F(HebrewTest, FailuresSayInTheUsersLanguageWhatToDo)
{
    for (const QStringList& call : failingCalls()) {
        const Said english = run(call);
        EXPECT_EQ(english.exitStatus, 1) << named(call, english);
        EXPECT_FALSE(hasHebrew(english.out + english.err)) << named(call, english);
        const Said hebrew = runInHebrew(call);
        EXPECT_EQ(hebrew.exitStatus, 1) << named(call, hebrew);
        expectHebrew(call, hebrew);
        EXPECT_EQ(hebrew.lines().size(), english.lines().size()) << named(call, hebrew);
        if (call.contains(u"--status"_s))
            continue; // This message says what to do in its only line.
#ifdef Q_OS_WIN
        if (call.startsWith(u"import"_s))
            continue; // It says how an old store is imported on Linux instead.
#endif
        EXPECT_TRUE(english.err.contains(u"what to do: "_s)) << named(call, english);
        EXPECT_TRUE(hebrew.err.contains(u"מה עושים: "_s)) << named(call, hebrew);
    }
}

TEST_F(HebrewTest, ResultsAreHebrew)
{
    const QString backups = at(u"backups"_s);
    ASSERT_TRUE(QDir().mkdir(backups));
    const QList<QStringList> calls{
        {u"create"_s, at(u"created.mdb"_s)},
        {u"check"_s, u"--figures"_s, store_.path()},
        {u"backup"_s, store_.path(), at(u"backup.mdb"_s)},
        {u"backup"_s, u"--daily"_s, store_.path(), backups},
        {u"backup"_s, u"--daily"_s, store_.path(), backups},
        {u"backup"_s, u"--status"_s, backups},
        {u"restore"_s, at(u"backup.mdb"_s), at(u"created.mdb"_s)},
        {u"move"_s, store_.path(), at(u"moved.mdb"_s)},
        {u"link"_s, at(u"link.mdb"_s), u"--file"_s, store_.path()},
    };
    for (const QStringList& call : calls) {
        const Said said = runInHebrew(call);
        EXPECT_EQ(said.exitStatus, 0) << named(call, said);
        expectHebrew(call, said);
    }
}

TEST_F(HebrewTest, OutputForOtherProgramsIsTheSameInBothLanguages)
{
    for (const QStringList& call : QList<QStringList>{{u"--version"_s}, {u"server-setup"_s}}) {
        const Said english = run(call);
        const Said hebrew = runInHebrew(call);
        EXPECT_EQ(english.exitStatus, 0);
        EXPECT_EQ(hebrew.exitStatus, 0);
        EXPECT_EQ(hebrew.out, english.out);
    }
}

/// Worked out by hand from the damage, for one finding of each of the checks.
TEST_F(HebrewTest, FindingsNameTablesFieldsAndNumbers)
{
    TemporaryStore store;
    store.addOrder(1);
    store.addLine(1, 1);
    store.addLine(1, 1);
    store.execute(u"UPDATE Cuts SET Order_Num = 9 WHERE Code = 2"_s);
    store.execute(u"UPDATE Orders SET Order_Date = NULL"_s);
    store.execute(u"CREATE TABLE Notes (id LONG)"_s);
    store.execute(u"CREATE TABLE zomrel_other (id LONG)"_s);
    const Said said = runInHebrew({u"check"_s, store.path()});
    for (const QString& each :
         {u"הטבלה Notes אינה של התוכנית"_s, u"שורות של הזמנה 9, שאינה קיימת: 1"_s,
          u"ברשומה Orders, Number 1: לא שמור דבר ב-Order_Date"_s})
        EXPECT_TRUE(said.plainLines().contains(each)) << named({}, said);
}

TEST_F(HebrewTest, RemarkIsHebrew)
{
    TemporaryStore store;
    store.addOrder(1);
    store.addLine(1, 1);
    store.addLine(1, 1);
    const Said said = runInHebrew({u"check"_s, store.path()});
    EXPECT_TRUE(said.plainLines().contains(u"הערה: בהזמנה 1 יש 2 שורות עם המספר 1"_s))
        << named({}, said);
}
