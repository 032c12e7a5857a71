#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace reliability {

/// The station program, run beside the test. It dies with the test.
class StationProcess
{
public:
    /// Starts it on the store of the folder; the arguments are the program's own.
    StationProcess(const QString& folder, const QString& scenario, const QString& name, int count);
    ~StationProcess();
    StationProcess(const StationProcess&) = delete;
    StationProcess& operator=(const StationProcess&) = delete;

    /// Waits until it has told this and says whether it did; every line until then is kept.
    bool waitFor(const QString& beginning, int patience = 30000);
    /// Reads what it tells for so many milliseconds.
    void listen(int milliseconds);
    /// Lets a paced station do its next step.
    void go(const QByteArray& word = "line");
    /// False where it has ended by itself.
    bool isAtWork() const { return process_.state() != QProcess::NotRunning; }
    /// Ends it as a power failure does.
    void kill();
    /// Its exit status; -1 where it did not end by itself.
    int exitStatus(int patience);

    /// The whole lines that it has told since the last call.
    QStringList takeTold();
    /// All that it has written to its standard error.
    QString errors();
    /// The run-time boxes that it has shown.
    QStringList runTimeBoxes();

private:
    void read();

    QProcess process_;
    QByteArray rest_;
    QStringList told_;
    QByteArray errors_;
};

} // namespace reliability
