#include "tools/shop/program.h"

#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"
#include "platform/runtime/version.h"
#include "tools/shop/commands.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <algorithm>
#include <exception>
#include <new>

using namespace Qt::StringLiterals;

namespace shoptools {

namespace {

void printUsage(QTextStream& stream)
{
    stream << "usage:\n";
    for (const Command& command : commands())
        stream << "  zomrel-shop " << command.name << ' ' << command.usage << "\n      "
               << command.summary << '\n';
    stream << "  zomrel-shop --help\n      show this help\n"
              "  zomrel-shop --version\n      show the version\n"
              "The default of --store is the store beside the program; check then uses no store.\n";
}

ExitStatus wrongUsage(QTextStream& err, const QString& message)
{
    err << "zomrel-shop: " << message << '\n';
    printUsage(err);
    return storetools::WrongUsage;
}

/// Returns the words of the command line with the options first and the other words after "--".
/// This order keeps a negative number from being parsed as an option. Throws WrongCall for an
/// option that lacks its value.
QStringList optionsFirst(const Command& command, const QStringList& words)
{
    static const QRegularExpression option(u"^-(?![0-9])."_s);
    QStringList options;
    QStringList others;
    for (qsizetype i = 0; i < words.size(); ++i) {
        if (words[i] == "--"_L1) {
            others += words.mid(i + 1);
            break;
        }
        (option.match(words[i]).hasMatch() ? options : others).append(words[i]);
        const bool takesValue = std::ranges::any_of(
            command.options, [&](const Option& each) { return words[i] == "--"_L1 + each.name; });
        if (takesValue && i + 1 == words.size())
            throw WrongCall(u"%1 takes a value"_s.arg(words[i]));
        if (takesValue)
            options.append(words[++i]);
    }
    return options + QStringList(u"--"_s) + others;
}

/// Parses the words after the command name. Throws WrongCall for an unknown option and for a
/// missing required option.
void parse(const Command& command, const QStringList& words, QCommandLineParser& parser)
{
    for (const Option& each : command.options)
        parser.addOption(QCommandLineOption(each.name, {}, each.value));
    if (!parser.parse(QStringList(u"zomrel-shop"_s) + optionsFirst(command, words)))
        throw WrongCall(parser.errorText());
    for (const Option& each : command.options) {
        if (each.isRequired && !parser.isSet(each.name))
            throw WrongCall(u"%1 takes --%2 %3"_s.arg(command.name, each.name, each.value));
    }
}

ExitStatus failure(QTextStream& err, const QString& message)
{
    err << "zomrel-shop: " << message << '\n';
    return storetools::Failure;
}

} // namespace

ExitStatus guarded(const std::function<ExitStatus()>& work, QTextStream& err)
{
    try {
        return work();
    } catch (const WrongCall& wrong) {
        return wrongUsage(err, wrong.message());
    } catch (const runtime::RunTimeError& error) {
        return failure(err, error.description());
    } catch (const std::bad_alloc&) {
        return failure(err, u"there is not enough memory"_s);
    } catch (const std::exception& error) {
        return failure(err, QString::fromLocal8Bit(error.what()));
    }
}

ExitStatus run(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    if (arguments.isEmpty())
        return wrongUsage(err, u"a command is missing"_s);
    const QString& name = arguments.first();
    if (arguments.size() == 1 && name == "--help"_L1) {
        printUsage(out);
        return storetools::Success;
    }
    if (arguments.size() == 1 && name == "--version"_L1) {
        out << "zomrel-shop " << runtime::programVersion().toString() << '\n';
        return storetools::Success;
    }
    const auto command = std::ranges::find(commands(), name, &Command::name);
    if (command == commands().end())
        return wrongUsage(err, u"unknown command '%1'"_s.arg(name));
    return guarded(
        [&] {
            QCommandLineParser parser;
            parse(*command, arguments.mid(1), parser);
            return command->run(parser, {out, err});
        },
        err);
}

} // namespace shoptools
