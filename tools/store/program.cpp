#include "tools/store/program.h"

#include "platform/runtime/run_time_error.h"
#include "platform/runtime/version.h"
#include "tools/store/backup.h"
#include "tools/store/builder.h"
#include "tools/store/checker.h"
#include "tools/store/old_store/reading.h"
#include "tools/store/old_store/take_over.h"
#include "tools/store/progress.h"

#include <QMap>

#include <algorithm>
#include <functional>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

const QString codePageOption = u"--code-page"_s;
const QString cutTextsOption = u"--cut-texts"_s;

/// What a command was given: its arguments in order and its options with their values.
struct Call
{
    QStringList arguments;
    QMap<QString, QString> options;
};

ExitStatus create(const Call& call, QTextStream& out, QTextStream&)
{
    const QString& path = call.arguments.first();
    createStore(path);
    out << "created " << path << '\n';
    return Success;
}

ExitStatus check(const Call& call, QTextStream& out, QTextStream&)
{
    const QString& path = call.arguments.first();
    const QStringList findings = checkStore(path);
    for (const QString& finding : findings)
        out << finding << '\n';
    if (!findings.isEmpty())
        return Failure;
    out << "sound and complete: " << path << '\n';
    return Success;
}

ExitStatus notSound(const QStringList& findings, QTextStream& err)
{
    for (const QString& finding : findings)
        err << finding << '\n';
    err << "zomrel-store: the store is not sound; nothing was changed\n";
    return Failure;
}

ExitStatus backup(const Call& call, QTextStream& out, QTextStream& err)
{
    const QStringList& arguments = call.arguments;
    const QStringList findings = backUpStore(arguments[0], arguments[1]);
    if (!findings.isEmpty())
        return notSound(findings, err);
    out << "backed up " << arguments[0] << " to " << arguments[1] << '\n';
    return Success;
}

ExitStatus restore(const Call& call, QTextStream& out, QTextStream& err)
{
    const QStringList& arguments = call.arguments;
    const RestoreOutcome outcome = restoreStore(arguments[0], arguments[1]);
    if (!outcome.findings.isEmpty())
        return notSound(outcome.findings, err);
    out << "restored " << arguments[1] << " from " << arguments[0] << '\n';
    if (!outcome.kept.isEmpty())
        out << "the store before is kept as " << outcome.kept << '\n';
    return Success;
}

ExitStatus wrongUsage(QTextStream& err, const QString& message);

/// Empty for a code page that there is not.
std::optional<CodePage> codePageNamed(const QString& name)
{
    try {
        return CodePage(name);
    } catch (const runtime::RunTimeError&) {
        return {};
    }
}

ExitStatus notTakenOver(const TakeOverOutcome& outcome, QTextStream& err)
{
    for (const QString& line : outcome.notes + outcome.findings)
        err << line << '\n';
    err << "zomrel-store: nothing was taken over\n";
    return Failure;
}

ExitStatus takeOver(const Call& call, QTextStream& out, QTextStream& err)
{
    TakeOverOptions options;
    if (const auto name = call.options.constFind(codePageOption); name != call.options.cend()) {
        const std::optional<CodePage> codePage = codePageNamed(*name);
        if (!codePage)
            return wrongUsage(
                err, u"there is no code page '%1' with a byte for each character"_s.arg(*name));
        options.codePage = *codePage;
    }
    options.cutTexts = call.options.contains(cutTextsOption);
    TakeOverOutcome outcome;
    {
        Progress progress(err);
        outcome =
            takeOverStore(call.arguments[0], call.arguments[1], options,
                          [&](const QString& what, qint64 rows) { progress.show(what, rows); });
    }
    if (!outcome.findings.isEmpty())
        return notTakenOver(outcome, err);
    for (const QString& note : outcome.notes)
        out << note << '\n';
    constexpr int nameWidth = 14;
    constexpr int numberWidth = 8;
    out << u"table"_s.leftJustified(nameWidth) << u"rows"_s.rightJustified(numberWidth) << '\n';
    for (const TakenTable& table : outcome.tables)
        out << table.name.leftJustified(nameWidth)
            << QString::number(table.rows).rightJustified(numberWidth) << '\n';
    out << "took over " << call.arguments[0] << " into " << call.arguments[1] << '\n';
    return Success;
}

struct Option
{
    QString name;
    QString value; ///< What stands behind it on the command line; empty where nothing does.
    QString summary;
};

struct Command
{
    QString name;
    QStringList arguments;
    QString summary;
    std::function<ExitStatus(const Call&, QTextStream& out, QTextStream& err)> run;
    std::vector<Option> options = {};
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
        {u"import"_s,
         {u"OLD.mdb"_s, u"TO"_s},
         u"take over an old-format store (Jet 3, Jet 4) into a new one"_s,
         takeOver,
         {{codePageOption, u"CP"_s, u"the code page of a Jet 3 file's texts (1255)"_s},
          {cutTextsOption, {}, u"cut texts that are longer than their field"_s}}},
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
    for (const Command& command : commands()) {
        line(command.name + u' ' + command.arguments.join(u' '), command.summary);
        for (const Option& option : command.options)
            stream << "    " << (option.name + u' ' + option.value).leftJustified(column + 11)
                   << option.summary << '\n';
    }
    line(u"--help"_s, u"show this"_s);
    line(u"--version"_s, u"show the version"_s);
}

ExitStatus wrongUsage(QTextStream& err, const QString& message)
{
    err << "zomrel-store: " << message << '\n';
    printUsage(err);
    return WrongUsage;
}

/// Sorts what stands behind the command's name. Gives what is wrong with it; empty where nothing
/// is.
QString readCall(const Command& command, const QStringList& words, Call& call)
{
    for (qsizetype i = 0; i < words.size(); ++i) {
        const auto option = std::ranges::find(command.options, words[i], &Option::name);
        if (option == command.options.end()) {
            call.arguments.append(words[i]);
            continue;
        }
        if (!option->value.isEmpty() && ++i == words.size())
            return u"%1 takes %2"_s.arg(option->name, option->value);
        call.options.insert(option->name, option->value.isEmpty() ? QString() : words[i]);
    }
    if (call.arguments.size() != command.arguments.size())
        return u"%1 takes %2"_s.arg(command.name, command.arguments.join(u' '));
    return {};
}

ExitStatus runCommand(const Command& command, const QStringList& words, QTextStream& out,
                      QTextStream& err)
{
    Call call;
    const QString wrong = readCall(command, words, call);
    if (!wrong.isEmpty())
        return wrongUsage(err, wrong);
    try {
        return command.run(call, out, err);
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
    if (arguments.size() == 2 && name == QLatin1StringView(readingCommand))
        return runReading(arguments[1]) == 0 ? Success : Failure;
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
