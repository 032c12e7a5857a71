// Power cuts while zomrel-store works, and while the program brings an older store up to date.

#include "crash/contents.h"
#include "crash/lab.h"
#include "crash/station.h"
#include "platform/dao/database.h"
#include "reliability/figures.h"
#include "store/store_access.h"
#include "support/printers.h"

#include <sqlite3.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString storeName = u"Aluminium.mdb"_s;
const QString copyName = u"copy.mdb"_s;
const QString keptName = u"Aluminium.mdb.before-restore"_s;

/// The rows of the files in a folder, by file name. A file that does not exist has no entry.
using Stores = std::map<QString, crash::Contents>;

Stores storesIn(const QString& folder, const QStringList& names)
{
    Stores stores;
    for (const QString& name : names) {
        const QString path = folder + u'/' + name;
        if (QFile::exists(path))
            stores[name] = crash::readStore(path.toStdString());
    }
    return stores;
}

/// Returns the rows of one of the stores, or nothing if there is no such file.
std::optional<crash::Contents> rowsOf(const Stores& stores, const QString& name)
{
    const auto found = stores.find(name);
    return found == stores.end() ? std::nullopt : std::optional(found->second);
}

class ToolCutsTest : public testing::Test
{
protected:
    ToolCutsTest()
    {
        lab_.putStore(storeName);
        crash::Station(lab_.at(storeName)).addOrder(1);
        crash::closeConnections();
    }
    static void TearDownTestSuite()
    {
        reliability::writeFigures(u"crash_tools"_s, {{u"states after a power cut that were read"_s,
                                                      QString::number(states)}});
    }

    /// Runs a command that has to succeed, and cuts the power at each of its steps. Each of the
    /// files has to be as before the command or as after it, and as after it once it has ended.
    void cut(const QStringList& arguments, const QStringList& names)
    {
        const Stores before = storesIn(lab_.folder(), names);
        crash::Run run;
        const crash::Record record = lab_.record([&] { run = crash::zomrelStore(arguments); });
        ASSERT_EQ(run.exitStatus, 0) << run.err.toStdString();
        const Stores after = storesIn(lab_.folder(), names);
        examine(record, [&](bool hasEnded, const QString& folder) {
            const Stores found = storesIn(folder, names);
            for (const QString& name : names) {
                const auto rows = rowsOf(found, name);
                if (rows != rowsOf(after, name) && (hasEnded || rows != rowsOf(before, name)))
                    return name.toStdString() + " is neither the former nor the new file";
            }
            return std::string();
        });
    }

    /// Looks at each state of a record.
    void examine(const crash::Record& record,
                 const std::function<std::string(bool hasEnded, const QString& folder)>& look)
    {
        const auto hasEnded = [&](std::size_t position) { return position == record.steps.size(); };
        const crash::Outcome outcome =
            lab_.examine(record, hasEnded, [&](const crash::State& state, const QString& folder) {
                return look(hasEnded(state.position), folder);
            });
        EXPECT_EQ(outcome.findings, QStringList());
        EXPECT_GT(outcome.states, 5);
        states += outcome.states;
    }

    crash::Lab lab_;
    static inline int states = 0;
};

void execute(const QString& path, const char* sql)
{
    sqlite3* connection = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &connection), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(connection, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(connection);
}

} // namespace

TEST_F(ToolCutsTest, Create_leavesNoFileOrTheWholeOne)
{
    cut({u"create"_s, lab_.at(u"new.mdb"_s)}, {u"new.mdb"_s});
}

TEST_F(ToolCutsTest, Backup_leavesNoFileOrTheWholeOne)
{
    cut({u"backup"_s, lab_.at(storeName), lab_.at(copyName)}, {copyName, storeName});
}

TEST_F(ToolCutsTest, Restore_leavesTheFormerStoreOrTheBackup)
{
    ASSERT_EQ(crash::zomrelStore({u"backup"_s, lab_.at(storeName), lab_.at(copyName)}).exitStatus,
              0);
    crash::Station(lab_.at(storeName)).addOrder(2);
    crash::closeConnections();
    cut({u"restore"_s, lab_.at(copyName), lab_.at(storeName)}, {storeName, keptName, copyName});
    EXPECT_TRUE(crash::readStore(lab_.at(keptName).toStdString()).contains(crash::orderKey(2)));
    EXPECT_FALSE(crash::readStore(lab_.at(storeName).toStdString()).contains(crash::orderKey(2)));
}

TEST_F(ToolCutsTest, Restore_ofAStoreThatIsGone_leavesNoFileOrTheBackup)
{
    cut({u"restore"_s, lab_.at(storeName), lab_.at(u"lost.mdb"_s)}, {storeName, u"lost.mdb"_s});
}

TEST_F(ToolCutsTest, UpgradeAtStart_leavesAStoreThatTheNextStartCompletes)
{
    crash::Station(lab_.at(storeName)).addLine(1, 1, 120.5);
    crash::closeConnections();
    execute(lab_.at(storeName), "DROP TABLE Orders");
    const crash::Contents rows = crash::readStore(lab_.at(storeName).toStdString());
    ASSERT_EQ(rows.size(), 1U);
    const crash::Record record = lab_.record([&] { store::BuildOrdersTable(lab_.at(storeName)); });
    int count = 0;
    examine(record, [&](bool, const QString& folder) {
        const QString path = folder + u'/' + storeName;
        std::string finding = crash::difference(rows, crash::readStore(path.toStdString()));
        if (!finding.empty() || ++count % 10 != 0)
            return finding;
        store::BuildOrdersTable(path);
        crash::Station(path).addOrder(1);
        crash::closeConnections();
        crash::Contents expected = rows;
        expected[crash::orderKey(1)] = crash::orderRow(1);
        return crash::difference(expected, crash::readStore(path.toStdString()));
    });
}
