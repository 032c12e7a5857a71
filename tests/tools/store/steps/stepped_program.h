#pragma once

#include "tools/store/program_run.h"

#include <QProcess>
#include <QString>

#include <csignal>

namespace storetooltest {

/// Where a run of zomrel-store is interrupted.
struct Interruption
{
    QString folder; ///< Only changes to files below this folder are counted as steps.
    int step = 0;   ///< The step before which the signal is sent, from 1; 0 for none.
    int signal = SIGKILL;
    bool noHardLinks = false;     ///< Treats the file systems as if they had no hard links.
    QString temporaryFolder = {}; ///< The folder for temporary files; empty for the usual one.
    QString log = {};             ///< A file that gets a line for each step; empty for none.
};

/// A run of zomrel-store that is interrupted at an exact step of its work on files.
class SteppedProgram
{
public:
    SteppedProgram(const QStringList& arguments, const Interruption& interruption);

    /// Waits until the process is stopped by the signal SIGSTOP. Returns false if it ends before.
    bool waitUntilStopped();
    void resume();
    /// Returns true as long as the process has not ended. Waits for its end up to a millisecond.
    bool isRunning();
    /// Waits for the end of the process. Returns true if it was killed at the step.
    bool wasKilled();
    /// Waits for the end of the process.
    Outcome outcome();

private:
    QProcess process_;
};

} // namespace storetooltest
