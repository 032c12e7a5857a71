#include "crash/lab.h"

#include "crash/recorder.h"
#include "crash/recording_vfs.h"
#include "platform/dao/database.h"
#include "tools/store/builder.h"
#include "tools/store/program.h"

#include <QDir>
#include <QFileInfo>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace crash {

namespace {

QString place()
{
    const QString memory = u"/dev/shm"_s;
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + u"/zomrel-crash-XXXXXX"_s;
}

} // namespace

Lab::Lab() : folder_(place())
{
    useRecordingVfs();
    QDir().mkpath(folder());
}

Lab::~Lab()
{
    closeConnections();
}

void Lab::putStore(const QString& name) const
{
    storetools::createStore(at(name), {});
    closeConnections();
}

void Lab::start() const
{
    closeConnections();
    Recorder::instance().start(folder().toStdString());
}

Record Lab::stop() const
{
    closeConnections();
    return Recorder::instance().stop();
}

Outcome
Lab::examine(const Record& record, const std::function<std::size_t(std::size_t)>& phaseOf,
             const std::function<std::string(const State&, const QString& folder)>& look) const
{
    Outcome outcome;
    const QString folder = folder_.filePath(u"state"_s);
    outcome.states = forEachState(record, phaseOf, [&](const State& state) {
        writeFolder(folder.toStdString(), state.files);
        std::string finding;
        try {
            finding = look(state, folder);
        } catch (const std::exception& error) {
            finding = error.what();
        }
        if (!finding.empty())
            outcome.findings.append(QString::fromStdString(state.description + ": " + finding));
    });
    return outcome;
}

Run zomrelStore(const QStringList& arguments)
{
    Run run;
    QTextStream out(&run.out);
    QTextStream err(&run.err);
    run.exitStatus = storetools::run(arguments, out, err);
    closeConnections();
    return run;
}

void closeConnections()
{
    dao::DBEngine::instance().Idle();
}

} // namespace crash
