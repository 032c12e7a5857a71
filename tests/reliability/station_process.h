#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace reliability {

/// A child process that runs the station program. The kernel kills it when the test dies.
class StationProcess
{
public:
    /// Starts the station on the store in the folder; the other arguments are those of the program.
    StationProcess(const QString& folder, const QString& scenario, const QString& name, int count);
    ~StationProcess();
    StationProcess(const StationProcess&) = delete;
    StationProcess& operator=(const StationProcess&) = delete;

    /// Waits up to `patience` milliseconds for a line with this beginning and returns whether it
    /// came. All lines up to it are kept.
    bool waitFor(const QString& beginning, int patience = 30000);
    /// Reads the station's output for the given time.
    void listen(int milliseconds);
    /// Sends a word to a paced station, which then does its next step.
    void go(const QByteArray& word = "line");
    /// Returns false if the process has ended by itself.
    bool isAtWork() const { return process_.state() != QProcess::NotRunning; }
    /// Stops the process as a suspended computer does, and lets it go on.
    void suspend();
    void resume();
    /// Kills the process.
    void kill();
    /// Waits up to `patience` milliseconds and returns the exit status, or -1 if the process did
    /// not end by itself.
    int exitStatus(int patience);

    /// Returns the complete lines of output since the last call.
    QStringList takeTold();
    /// Returns all output on the standard error stream.
    QString errors();
    /// Returns the run-time error boxes that the station has shown.
    QStringList runTimeBoxes();

private:
    void read();

    QProcess process_;
    QByteArray rest_;
    QStringList told_;
    QByteArray errors_;
};

} // namespace reliability
