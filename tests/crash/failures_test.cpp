// System calls that fail: a defective disk, a full disk, and locks that the file system refuses.

#include "crash/day.h"
#include "crash/lab.h"
#include "crash/recorder.h"
#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"
#include "reliability/figures.h"
#include "support/printers.h"

#include <cerrno>
#include <set>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString storeName = u"Aluminium.mdb"_s;
const QString copyName = u"copy.mdb"_s;
constexpr std::chrono::milliseconds shortWait(20);

/// The error number of a failing call, and the run-time errors that may end a station then. SQLite
/// opens a store only for reading if it cannot open it for writing.
struct Kind
{
    const char* name;
    int error;
    std::set<int> numbers;
};

const std::vector<Kind>& kinds()
{
    static const std::vector<Kind> all{
        {"EIO", EIO, {runtime::DiskOrNetworkError, runtime::PermissionDenied, runtime::ReadOnly}},
        {"ENOSPC",
         ENOSPC,
         {runtime::DiskFull, runtime::DiskOrNetworkError, runtime::PermissionDenied,
          runtime::ReadOnly}},
        {"ENOLCK", ENOLCK, {runtime::Locked, runtime::DiskOrNetworkError}},
    };
    return all;
}

/// The work of one run, and the comparison with what must be there.
struct Scenario
{
    std::function<void()> prepare;     ///< Fills the folder.
    std::function<void()> work;        ///< Runs while a call fails.
    std::function<std::string()> look; ///< Returns what is wrong afterwards.
};

/// The parameter is true if all calls after the first failing one fail as well.
class FailuresTest : public testing::TestWithParam<bool>
{
protected:
    FailuresTest()
    {
        dao::DBEngine::instance().Workspaces(0).setLockWait(shortWait);
        lab_.putStore(storeName);
        crash::Station(lab_.at(storeName)).addOrder(98);
        crash::closeConnections();
        initial_ = crash::readFolder(lab_.folder().toStdString()).at(storeName.toStdString());
    }
    static void TearDownTestSuite()
    {
        reliability::writeFigures(u"crash_failures"_s,
                                  {{u"calls that failed"_s, QString::number(failures)}});
    }

    /// Lets each call of the work fail, one in each run.
    void failEach(const Scenario& scenario)
    {
        for (const Kind& kind : kinds()) {
            int call = 0;
            do {
                putNextStore();
                scenario.prepare();
                crash::closeConnections();
            } while (failOne(scenario, kind, ++call) && findings_.size() < mostFindings);
            EXPECT_GT(call, 5) << kind.name;
        }
        EXPECT_EQ(findings_, QStringList());
    }

    QString storePath() const { return lab_.at(u"store%1.mdb"_s.arg(runs_)); }
    QString copyPath() const { return lab_.at(copyName); }

    /// Runs a command of zomrel-store. Throws std::runtime_error if it ends with an undocumented
    /// exit status.
    bool command(const QStringList& arguments)
    {
        const crash::Run run = crash::zomrelStore(arguments);
        if (run.exitStatus != 0 && (run.exitStatus != 1 || run.err.isEmpty()))
            throw std::runtime_error("exit status " + std::to_string(run.exitStatus));
        return run.exitStatus == 0;
    }

    /// Returns what zomrel-store check finds wrong with the store.
    std::string checkFinding() const
    {
        const crash::Run check = crash::zomrelStore({u"check"_s, storePath()});
        return check.exitStatus == 0 ? std::string() : (check.out + check.err).toStdString();
    }

    static crash::Contents rowsOf(const QString& path)
    {
        return crash::readStore(path.toStdString());
    }

    crash::Lab lab_;

private:
    /// Leaves one store in the folder. Each run has another name, because this process writes to no
    /// store that was replaced under its name.
    void putNextStore()
    {
        ++runs_;
        crash::writeFolder(lab_.folder().toStdString(),
                           {{u"store%1.mdb"_s.arg(runs_).toStdString(), initial_}});
    }

    /// Returns false if the work makes fewer calls, so that none has failed.
    bool failOne(const Scenario& scenario, const Kind& kind, int call)
    {
        crash::Recorder& recorder = crash::Recorder::instance();
        recorder.failIn(lab_.folder().toStdString(),
                        {.error = kind.error, .call = call, .stays = GetParam()});
        std::string finding;
        try {
            scenario.work();
        } catch (const runtime::RunTimeError& error) {
            if (!kind.numbers.contains(error.number()))
                finding = error.what();
        } catch (const std::exception& error) {
            finding = error.what();
        }
        crash::closeConnections();
        recorder.endFailing();
        failures += recorder.hasFailed() ? 1 : 0;
        try {
            finding += scenario.look();
        } catch (const std::exception& error) {
            finding += error.what();
        }
        if (!finding.empty())
            findings_.append(u"%1 at call %2: %3"_s.arg(QLatin1StringView(kind.name))
                                 .arg(call)
                                 .arg(QString::fromStdString(finding)));
        return recorder.hasFailed();
    }

    static constexpr qsizetype mostFindings = 10;
    static inline int failures = 0;
    std::string initial_;
    int runs_ = 0;
    QStringList findings_;
};

INSTANTIATE_TEST_SUITE_P(, FailuresTest, testing::Bool(), [](const auto& each) {
    return each.param ? "AllCallsFromOneOn" : "OneCall";
});

} // namespace

TEST_P(FailuresTest, FailingCallOfAStation_keepsTheAcknowledgedChanges)
{
    constexpr int runsPerCheck = 5;
    int runs = 0;
    std::unique_ptr<crash::Day> day;
    failEach({[&] { day = std::make_unique<crash::Day>(storePath()); }, [&] { day->runBriefly(); },
              [&] {
                  crash::Contents found = rowsOf(storePath());
                  found.erase(crash::orderKey(98));
                  const std::string finding = day->ledger().findingNow(found);
                  if (!finding.empty())
                      return finding;
                  crash::Station(storePath()).addOrder(99);
                  return ++runs % runsPerCheck == 0 ? checkFinding() : std::string();
              }});
}

TEST_P(FailuresTest, FailingCallOfABackup_leavesAWholeBackupOrNone)
{
    bool isDone = false;
    crash::Contents rows;
    failEach({[&] {
                  isDone = false;
                  rows = rowsOf(storePath());
              },
              [&] {
                  isDone = command({u"backup"_s, storePath(), copyPath()});
              },
              [&] {
                  const bool exists = QFile::exists(copyPath());
                  if (isDone && !exists)
                      return std::string("the backup is missing");
                  const std::string finding =
                      exists ? crash::difference(rows, rowsOf(copyPath())) : std::string();
                  return finding.empty() ? crash::difference(rows, rowsOf(storePath())) : finding;
              }});
}

TEST_P(FailuresTest, FailingCallOfARestore_leavesTheFormerStoreOrTheBackup)
{
    bool isDone = false;
    crash::Contents backup;
    crash::Contents former;
    failEach({[&] {
                  isDone = false;
                  command({u"backup"_s, storePath(), copyPath()});
                  backup = rowsOf(copyPath());
                  crash::Station(storePath()).addOrder(97);
                  former = rowsOf(storePath());
              },
              [&] {
                  isDone = command({u"restore"_s, copyPath(), storePath()});
              },
              [&] {
                  const crash::Contents found = rowsOf(storePath());
                  const std::string finding = crash::difference(backup, found);
                  if (!finding.empty())
                      return isDone ? finding : crash::difference(former, found);
                  // The backup is in place, so the former rows are in the kept store.
                  return crash::difference(former, rowsOf(storePath() + u".before-restore"_s));
              }});
}
