#pragma once

#include "crash/states.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace crash {

/// The number of states that a simulation has examined, and the faults that it has found.
struct Outcome
{
    int states = 0;
    QStringList findings;
};

/// The folders of one simulation: one in which the program works and one for the states after power
/// cuts. Both are in memory if the system has a place for that.
class Lab
{
public:
    Lab();
    ~Lab();
    Lab(const Lab&) = delete;
    Lab& operator=(const Lab&) = delete;

    /// The folder that is recorded.
    QString folder() const { return folder_.filePath(QStringLiteral("work")); }
    /// Returns the path of a file in the recorded folder.
    QString at(const QString& name) const { return folder() + u'/' + name; }
    /// Puts a new store without rows into the recorded folder.
    void putStore(const QString& name) const;

    /// Records what `work` does, until its last connection is closed.
    template <typename Work>
    Record record(Work&& work)
    {
        start();
        work();
        return stop();
    }

    /// Writes the files of each state to a folder and looks at them. `look` returns what is wrong,
    /// or an empty text; what it throws is a finding as well. See forEachState for phases.
    Outcome
    examine(const Record& record, const std::function<std::size_t(std::size_t)>& phaseOf,
            const std::function<std::string(const State&, const QString& folder)>& look) const;

private:
    void start() const;
    Record stop() const;

    QTemporaryDir folder_;
};

struct Run
{
    int exitStatus = -1;
    QString out;
    QString err;
};

/// Runs a command of zomrel-store in this process.
Run zomrelStore(const QStringList& arguments);

/// Closes the connections that nobody uses.
void closeConnections();

} // namespace crash
