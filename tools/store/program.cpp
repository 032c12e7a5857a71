#include "tools/store/program.h"

#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"
#include "platform/runtime/version.h"
#include "tools/store/advice.h"
#include "tools/store/commands.h"
#include "tools/store/import_command.h"
#include "tools/store/language.h"
#include "tools/store/old_store/reading_command.h"
#include "tools/store/scratch_folder.h"

#include <QCommandLineParser>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

/// Timeout for a server's answer to one statement. A command processes a whole store, which takes
/// longer than a query of a form.
constexpr std::chrono::minutes patience(5);

/// Returns an option with the placeholders of what follows it.
QString wordsOf(const Option& option)
{
    return (QStringList{option.name, option.value} + option.arguments).join(u' ').simplified();
}

void printUsage(QTextStream& stream)
{
    constexpr int column = 24;
    const auto line = [&](const QString& call, const QString& summary) {
        stream << "  zomrel-store " << call.leftJustified(column) << summary << '\n';
    };
    stream << "usage:\n";
    for (const Command& command : commands()) {
        line((QStringList(command.name) + command.arguments).join(u' '), command.summary);
        for (const Option& option : command.options)
            stream << "    " << wordsOf(option).leftJustified(column + 11) << option.summary
                   << '\n';
    }
    line(u"--help"_s, u"show this help"_s);
    line(u"--version"_s, u"show the version"_s);
    stream << "A store is given as its file, as a link file, or as "
              "postgresql://USER@HOST/DATABASE.\n"
              "The commands create and backup write new files.\n";
}

ExitStatus wrongUsage(QTextStream& err, const QString& message)
{
    err << "zomrel-store: " << message << '\n';
    printUsage(err);
    return WrongUsage;
}

QString nameOf(const Option& option)
{
    return option.name.mid(2); // without the two dashes
}

/// Returns the placeholders of the arguments that a command takes with these options.
QStringList argumentsOf(const Command& command, const QMap<QString, QString>& options)
{
    for (const Option& each : command.options) {
        if (!each.arguments.isEmpty() && options.contains(each.name))
            return each.arguments;
    }
    return command.arguments;
}

bool isRightNumber(qsizetype number, const QStringList& placeholders)
{
    const auto optional = std::count_if(placeholders.begin(), placeholders.end(),
                                        [](const QString& each) { return each.startsWith(u'['); });
    return number <= placeholders.size() && number >= placeholders.size() - optional;
}

QString takes(const Command& command, const QStringList& placeholders)
{
    const QString words = placeholders.isEmpty() ? u"nothing"_s : placeholders.join(u' ');
    return u"%1 takes %2"_s.arg(command.name, words);
}

/// Separates the words after the command name into options and arguments. Throws WrongCall for a
/// missing value, an unknown option, or a wrong number of arguments.
Call callOf(const Command& command, const QStringList& words)
{
    QCommandLineParser parser;
    for (const Option& each : command.options)
        parser.addOption({nameOf(each), each.summary, each.value});
    const bool isUnderstood = parser.parse(QStringList(command.name) + words);
    Call call{.arguments = parser.positionalArguments(), .options = {}};
    for (const Option& each : command.options) {
        if (!parser.isSet(nameOf(each)))
            continue;
        const QStringList values = parser.values(nameOf(each));
        if (!each.value.isEmpty() && values.isEmpty())
            throw WrongCall(u"%1 takes %2"_s.arg(each.name, each.value));
        call.options.insert(each.name, values.isEmpty() ? QString() : values.last());
    }
    const QStringList placeholders = argumentsOf(command, call.options);
    if (!isUnderstood || !isRightNumber(call.arguments.size(), placeholders))
        throw WrongCall(takes(command, placeholders));
    return call;
}

ExitStatus runCommand(const Command& command, const QStringList& words, QTextStream& out,
                      QTextStream& err)
{
    try {
        ScratchFolder::removeLeft();
        return command.run(callOf(command, words), out, err);
    } catch (const WrongCall& wrong) {
        return wrongUsage(err, wrong.message());
    } catch (const runtime::RunTimeError& error) {
        err << "zomrel-store: " << error.description() << '\n';
        const QString advice = speaksHebrew() ? hebrewAdvice(error.number()) : QString();
        if (!advice.isEmpty())
            err << "zomrel-store: " << advice << '\n';
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
        return readOldFile(arguments[1]);
    if (arguments.size() == 1 && name == "--help"_L1) {
        printUsage(out);
        return Success;
    }
    if (arguments.size() == 1 && name == "--version"_L1) {
        out << "zomrel-store " << runtime::programVersion().toString() << '\n';
        return Success;
    }
    dao::DBEngine::instance().Workspaces(0).setAnswerWait(patience);
    for (const Command& command : commands()) {
        if (command.name == name)
            return runCommand(command, arguments.mid(1), out, err);
    }
    return wrongUsage(err, u"unknown command '%1'"_s.arg(name));
}

} // namespace storetools
