#include "tools/store/program.h"

#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"
#include "platform/runtime/version.h"
#include "tools/store/commands.h"
#include "tools/store/import_command.h"
#include "tools/store/old_store/reading_command.h"
#include "tools/store/reporting.h"
#include "tools/store/scratch_folder.h"
#include "tools/store/shared_texts.h"

#include <QCommandLineParser>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

/// The timeout for a server's answer to one statement. The timeout is long, because a command
/// processes a whole store, which takes longer than a query of a form.
constexpr std::chrono::minutes patience(5);

/// Returns an option as the help text shows it: the option's name, a placeholder for its value if
/// it has one, and the arguments that the command then takes. An example without a value is
/// "--daily [STORE] FOLDER".
QString wordsOf(const Option& option)
{
    return (QStringList{option.name, option.value} + option.arguments).join(u' ').simplified();
}

/// Prints one entry of the help text: a command line or an option in the first column, and what it
/// does in the second column.
void printCall(QTextStream& stream, const QString& indentation, const QString& call,
               const Text& summary)
{
    constexpr qsizetype column = 39;
    const qsizetype gap = column - indentation.size() - call.size();
    stream << indentation << isolated(call) << QString(std::max<qsizetype>(gap, 0), u' ')
           << say(summary) << '\n';
}

void printUsage(QTextStream& stream)
{
    const auto print = [&](const QString& call, const Text& summary) {
        printCall(stream, u"  "_s, u"zomrel-store "_s + call, summary);
    };
    stream << say({u"usage:", u"שימוש:"}) << '\n';
    for (const Command& command : commands()) {
        print((QStringList(command.name) + command.arguments).join(u' '), command.summary);
        for (const Option& option : command.options)
            printCall(stream, u"    "_s, wordsOf(option), option.summary);
    }
    print(u"--help"_s, {u"show this help", u"להציג את העזרה הזאת"});
    print(u"--version"_s, {u"show the version", u"להציג את הגרסה"});
    stream << say({u"A store is given as its file, as a link file, or as "
                   "postgresql://USER@HOST/DATABASE.",
                   u"במקום {FILE} כותבים את קובץ הנתונים, קובץ של קישור, או כתובת: "
                   "{postgresql://USER@HOST/DATABASE}."})
           << '\n'
           << say({u"The commands create and backup write new files.",
                   u"הפקודות {create} ו-{backup} כותבות קבצים חדשים."})
           << '\n';
}

ExitStatus wrongUsage(QTextStream& err, const QString& message)
{
    tell(err, message);
    printUsage(err);
    return WrongUsage;
}

QString optionName(const Option& option)
{
    return option.name.mid(2); // without the two dashes
}

/// Returns the placeholders for a command's arguments in the help text. If one of the given
/// `options` has arguments of its own, returns those instead.
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

QString whatTakes(const Command& command, const QStringList& placeholders)
{
    if (placeholders.isEmpty())
        return say({u"%1 takes nothing", u"אחרי %1 לא כותבים דבר"}, command.name);
    return say(takes, command.name, placeholders.join(u' '));
}

/// Separates the words after the command name into options and arguments. Throws WrongCall for a
/// missing value of an option, an unknown option, or a wrong number of arguments.
Call callOf(const Command& command, const QStringList& words)
{
    QCommandLineParser parser;
    for (const Option& each : command.options)
        parser.addOption({optionName(each), QString(), each.value});
    const bool isUnderstood = parser.parse(QStringList(command.name) + words);
    Call call{.arguments = parser.positionalArguments(), .options = {}};
    for (const Option& each : command.options) {
        if (!parser.isSet(optionName(each)))
            continue;
        const QStringList values = parser.values(optionName(each));
        if (!each.value.isEmpty() && values.isEmpty())
            throw WrongCall(say(takes, each.name, each.value));
        call.options.insert(each.name, values.isEmpty() ? QString() : values.last());
    }
    const QStringList placeholders = argumentsOf(command, call.options);
    if (!isUnderstood || !isRightNumber(call.arguments.size(), placeholders))
        throw WrongCall(whatTakes(command, placeholders));
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
        return fail(err, error);
    }
}

} // namespace

ExitStatus run(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    if (arguments.isEmpty())
        return wrongUsage(err, say({u"a command is missing", u"חסרה פקודה"}));
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
    return wrongUsage(err, say({u"unknown command '%1'", u"אין פקודה בשם '%1'"}, name));
}

} // namespace storetools
