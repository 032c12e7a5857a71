#include "tools/store/program.h"

#include "platform/runtime/run_time_error.h"
#include "platform/runtime/version.h"
#include "tools/store/backup.h"
#include "tools/store/builder.h"
#include "tools/store/checker.h"

#include <functional>
#include <vector>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

ExitStatus create(const QStringList& arguments, QTextStream& out, QTextStream&)
{
    createStore(arguments.first());
    out << "created " << arguments.first() << '\n';
    return Success;
}

ExitStatus check(const QStringList& arguments, QTextStream& out, QTextStream&)
{
    const QStringList findings = checkStore(arguments.first());
    for (const QString& finding : findings)
        out << finding << '\n';
    if (!findings.isEmpty())
        return Failure;
    out << "sound and complete: " << arguments.first() << '\n';
    return Success;
}

ExitStatus notSound(const QStringList& findings, QTextStream& err)
{
    for (const QString& finding : findings)
        err << finding << '\n';
    err << "zomrel-store: the store is not sound; nothing was changed\n";
    return Failure;
}

ExitStatus backup(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    const QStringList findings = backUpStore(arguments[0], arguments[1]);
    if (!findings.isEmpty())
        return notSound(findings, err);
    out << "backed up " << arguments[0] << " to " << arguments[1] << '\n';
    return Success;
}

ExitStatus restore(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    const RestoreOutcome outcome = restoreStore(arguments[0], arguments[1]);
    if (!outcome.findings.isEmpty())
        return notSound(outcome.findings, err);
    out << "restored " << arguments[1] << " from " << arguments[0] << '\n';
    if (!outcome.kept.isEmpty())
        out << "the store before is kept as " << outcome.kept << '\n';
    return Success;
}

struct Command
{
    QString name;
    QStringList arguments;
    QString summary;
    std::function<ExitStatus(const QStringList&, QTextStream& out, QTextStream& err)> run;
};

const std::vector<Command>& commands()
{
    static const std::vector<Command> all{
        {u"create"_s, {u"FILE"_s}, u"make a new store with the delivered catalogue"_s, create},
        {u"check"_s,
         {u"FILE"_s},
         u"tell whether a store is sound, a line for each finding"_s,
         check},
        {u"backup"_s,
         {u"FILE"_s, u"TO"_s},
         u"copy a store to a new file, also while stations work"_s,
         backup},
        {u"restore"_s,
         {u"BACKUP"_s, u"FILE"_s},
         u"put a sound backup in a store's place and keep that store"_s,
         restore},
    };
    return all;
}

void printUsage(QTextStream& stream)
{
    constexpr int column = 24;
    const auto line = [&](const QString& call, const QString& summary) {
        stream << "  zomrel-store " << call.leftJustified(column) << summary << '\n';
    };
    stream << "usage:\n";
    for (const Command& command : commands())
        line(command.name + u' ' + command.arguments.join(u' '), command.summary);
    line(u"--help"_s, u"show this"_s);
    line(u"--version"_s, u"show the version"_s);
}

ExitStatus wrongUsage(QTextStream& err, const QString& message)
{
    err << "zomrel-store: " << message << '\n';
    printUsage(err);
    return WrongUsage;
}

ExitStatus runCommand(const Command& command, const QStringList& arguments, QTextStream& out,
                      QTextStream& err)
{
    if (arguments.size() != command.arguments.size())
        return wrongUsage(err, u"%1 takes %2"_s.arg(command.name, command.arguments.join(u' ')));
    try {
        return command.run(arguments, out, err);
    } catch (const runtime::RunTimeError& error) {
        err << "zomrel-store: " << error.description() << '\n';
        return Failure;
    }
}

} // namespace

ExitStatus run(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    if (arguments.isEmpty())
        return wrongUsage(err, u"a command is missing"_s);
    const QString& name = arguments.first();
    if (arguments.size() == 1 && name == "--help"_L1) {
        printUsage(out);
        return Success;
    }
    if (arguments.size() == 1 && name == "--version"_L1) {
        out << "zomrel-store " << runtime::programVersion().toString() << '\n';
        return Success;
    }
    for (const Command& command : commands()) {
        if (command.name == name)
            return runCommand(command, arguments.mid(1), out, err);
    }
    return wrongUsage(err, u"unknown command '%1'"_s.arg(name));
}

} // namespace storetools
