#include "tools/shop/program.h"

#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"
#include "platform/runtime/version.h"
#include "tools/shop/commands.h"

#include <QCommandLineParser>

#include <algorithm>

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

/// Parses the words after the command name. Throws WrongCall for an unknown option or a missing
/// one.
void parse(const Command& command, const QStringList& words, QCommandLineParser& parser)
{
    for (const Option& each : command.options)
        parser.addOption(QCommandLineOption(each.name, {}, each.value));
    if (!parser.parse(QStringList(u"zomrel-shop"_s) + words))
        throw WrongCall(parser.errorText());
    for (const Option& each : command.options) {
        if (each.isRequired && !parser.isSet(each.name))
            throw WrongCall(u"%1 takes --%2 %3"_s.arg(command.name, each.name, each.value));
    }
}

ExitStatus runCommand(const Command& command, const QStringList& words, const Streams& streams)
{
    QCommandLineParser parser;
    try {
        parse(command, words, parser);
        return command.run(parser, streams);
    } catch (const WrongCall& wrong) {
        return wrongUsage(streams.err, wrong.message());
    } catch (const runtime::RunTimeError& error) {
        streams.err << "zomrel-shop: " << error.description() << '\n';
        return storetools::Failure;
    }
}

} // namespace

ExitStatus run(const QStringList& arguments, QTextStream& out, QTextStream& err,
               const std::atomic<bool>& cancelled)
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
    return runCommand(*command, arguments.mid(1), {out, err, cancelled});
}

} // namespace shoptools
