#include "tools/shop/commands.h"

#include "platform/runtime/run_time_error.h"
#include "shop/bar_table.h"
#include "shop/checking/plan_check.h"
#include "shop/documents.h"
#include "shop/order_source.h"
#include "shop/pack_check.h"
#include "shop/paper/papers.h"
#include "shop/settings_file.h"
#include "tools/shop/document_kinds.h"
#include "tools/shop/file_set.h"
#include "tools/shop/interruption.h"
#include "tools/store/system.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace shoptools {

namespace {

const QString storeOption = u"store"_s;
const QString outOption = u"out"_s;
const QString documentsOption = u"documents"_s;
const QString secondsOption = u"seconds"_s;
const QString exportOption = u"export"_s;
const QString importOption = u"import"_s;

QString storePath(const QCommandLineParser& parser)
{
    if (parser.isSet(storeOption))
        return parser.value(storeOption);
    return QDir(QCoreApplication::applicationDirPath()).filePath(u"Aluminium.mdb"_s);
}

/// Returns the order numbers on the command line, without duplicates. Throws WrongCall if there are
/// none, and NoCurrentRecord (3021) for an argument that is not a number.
QList<int> ordersOf(const QCommandLineParser& parser)
{
    QList<int> orders;
    for (const QString& each : parser.positionalArguments()) {
        bool isNumber = false;
        const int order = each.toInt(&isNumber);
        if (!isNumber)
            throw RunTimeError(runtime::NoCurrentRecord, u"There is no order %1."_s.arg(each));
        if (!orders.contains(order))
            orders.append(order);
    }
    if (orders.isEmpty())
        throw WrongCall(u"the number of an order is missing"_s);
    return orders;
}

void printFaults(const std::vector<shop::Fault>& faults, QTextStream& err)
{
    for (const shop::Fault& each : faults)
        err << shop::faultText(each) << '\n';
}

void printLines(const QStringList& lines, QTextStream& stream)
{
    for (const QString& each : lines)
        stream << each << '\n';
}

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw RunTimeError(runtime::FileNotFound,
                           u"Could not read '%1': %2"_s.arg(path, file.errorString()));
    return file.readAll();
}

ExitStatus pieces(const QCommandLineParser& parser, const Streams& streams)
{
    const shop::OrderSource source =
        shop::readOrders(storePath(parser), ordersOf(parser), shop::Explanations::Skipped);
    const shop::Pieces pieces = shop::piecesOf(source.lines, source.settings);
    printFaults(pieces.faults, streams.err);
    // The flag ConvertInitialBom keeps the byte order mark at the start of the CSV text. By default
    // QStringDecoder removes a byte order mark.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    const QString csv = decoder.decode(shop::piecesCsv(pieces.pieces, source.settings));
    streams.out << csv;
    return storetools::Success;
}

QString documentNames()
{
    QStringList names;
    for (const shop::DocumentKind& each : documentKinds())
        names.append(each.name);
    return names.join(", "_L1);
}

/// Returns the documents that the option --documents names, or all documents without this option.
/// Throws InvalidProcedureCall (5) for an unknown document name.
std::vector<shop::DocumentKind> documentsOf(const QCommandLineParser& parser)
{
    if (!parser.isSet(documentsOption))
        return documentKinds();
    const QStringList names = parser.value(documentsOption).split(u',');
    std::vector<shop::DocumentKind> kinds;
    for (const shop::DocumentKind& each : documentKinds()) {
        if (names.contains(each.name))
            kinds.push_back(each);
    }
    for (const QString& name : names) {
        if (std::ranges::find(kinds, name, &shop::DocumentKind::name) == kinds.end())
            throw RunTimeError(
                runtime::InvalidProcedureCall,
                u"Unknown document '%1'. The documents are %2."_s.arg(name, documentNames()));
    }
    return kinds;
}

/// Returns the time limit of the planning from the option --seconds, or nothing without this
/// option. Throws WrongCall for an invalid time limit.
std::optional<std::chrono::milliseconds> timeLimit(const QCommandLineParser& parser)
{
    if (!parser.isSet(secondsOption))
        return {};
    bool isNumber = false;
    const double seconds = parser.value(secondsOption).toDouble(&isNumber);
    constexpr double aWeek = 7 * 24 * 60 * 60;
    if (!isNumber || !(seconds >= 0) || seconds > aWeek)
        throw WrongCall(u"--seconds takes a number from 0"_s);
    return std::chrono::milliseconds(std::llround(seconds * 1000));
}

void printSummary(const std::vector<shop::GroupPlan>& groups, QTextStream& out)
{
    for (const shop::GroupPlan& each : groups) {
        const int bars = each.barCount();
        out << shop::partName(each.group.part) << " '" << each.group.profile << "' '"
            << each.group.colour << "': " << bars << " bars, bound " << each.bound << ", ";
        if (each.proved)
            out << "proved: no plan needs fewer bars";
        else
            out << "at most " << bars - each.bound << " bars above the bound";
        out << ", " << each.stops << " stop settings\n";
    }
}

/// Plans how the pieces of the orders are cut from bars. The time limit or an interruption (SIGINT)
/// ends the planning early.
shop::ShopPack packOf(const shop::OrderSource& source,
                      std::optional<std::chrono::milliseconds> timeLimit, QTextStream& err)
{
    const bool isShown = storetools::errorsGoToATerminal();
    const Interruption interruption;
    std::optional<std::chrono::steady_clock::time_point> deadline;
    if (timeLimit)
        deadline = std::chrono::steady_clock::now() + *timeLimit;
    shop::ShopPack pack{
        shop::piecesOf(source.lines, source.settings), {}, source.orders, source.explanations};
    pack.groups =
        shop::planGroups(pack.pieces.pieces, source.settings, {&interruption.flag(), deadline},
                         [&](std::size_t done, std::size_t all) {
                             if (!isShown)
                                 return;
                             err << "\rplanned " << done << " of " << all << " groups";
                             err << (done == all ? "\n" : "");
                             err.flush();
                         });
    return pack;
}

ExitStatus plan(const QCommandLineParser& parser, const Streams& streams)
{
    const std::vector<shop::DocumentKind> documents = documentsOf(parser);
    const QList<int> orders = ordersOf(parser);
    const std::optional<std::chrono::milliseconds> limit = timeLimit(parser);
    const bool hasPaper =
        std::ranges::find(documents, u"paper"_s, &shop::DocumentKind::name) != documents.end();
    const shop::OrderSource source =
        shop::readOrders(storePath(parser), orders,
                         hasPaper ? shop::Explanations::Read : shop::Explanations::Skipped);
    requireWritable(parser.value(outOption));
    const shop::ShopPack pack = packOf(source, limit, streams.err);
    printFaults(pack.pieces.faults, streams.err);
    QMap<QString, QByteArray> files;
    for (const shop::DocumentKind& each : documents)
        files.insert(each.file.isEmpty() ? shop::paper::paperFile(pack) : each.file,
                     each.make(pack));
    const QStringList findings = shop::findingsIn(pack, source.settings, files);
    if (!findings.isEmpty()) {
        printLines(findings, streams.err);
        streams.err << "zomrel-shop: the plan has errors; nothing was written\n";
        return storetools::Failure;
    }
    writeFiles(parser.value(outOption), files);
    printSummary(pack.groups, streams.out);
    return storetools::Success;
}

ExitStatus exportSettings(const QString& store, const QString& path, QTextStream& out)
{
    const QByteArray file = shop::settingsFile(shop::readStoredBars(store));
    const QFileInfo target(path);
    writeFiles(target.path(), {{target.fileName(), file}});
    out << "exported the settings to " << path << '\n';
    return storetools::Success;
}

ExitStatus importSettings(const QString& store, const QString& path, const Streams& streams)
{
    const std::vector<shop::GroupKey> groups = shop::readBarGroups(store);
    const shop::SettingsIntake intake = shop::readSettingsFile(contentsOf(path), groups);
    if (!intake.findings.isEmpty()) {
        printLines(intake.findings, streams.err);
        streams.err << "zomrel-shop: nothing was imported\n";
        return storetools::Failure;
    }
    shop::writeBarTable(store, intake.settings);
    streams.out << "imported " << intake.settings.size() << " settings from " << path << '\n';
    return storetools::Success;
}

ExitStatus settings(const QCommandLineParser& parser, const Streams& streams)
{
    if (!parser.positionalArguments().isEmpty() ||
        parser.isSet(exportOption) == parser.isSet(importOption))
        throw WrongCall(u"settings takes either --export FILE or --import FILE"_s);
    if (parser.isSet(exportOption))
        return exportSettings(storePath(parser), parser.value(exportOption), streams.out);
    return importSettings(storePath(parser), parser.value(importOption), streams);
}

ExitStatus check(const QCommandLineParser& parser, const Streams& streams)
{
    if (parser.positionalArguments().size() != 1)
        throw WrongCall(u"check takes PLAN.json"_s);
    const QString path = parser.positionalArguments().first();
    const QByteArray file = contentsOf(path);
    QStringList findings = shop::checking::checkPlanFile(file);
    if (findings.isEmpty() && parser.isSet(storeOption)) {
        const QJsonObject plan = QJsonDocument::fromJson(file).object();
        const shop::OrderSource source = shop::readOrders(
            storePath(parser), shop::checking::ordersIn(plan), shop::Explanations::Skipped);
        findings = shop::checking::checkAgainst(plan, shop::piecesOf(source.lines, source.settings),
                                                source.settings);
    }
    printLines(findings, streams.out);
    if (!findings.isEmpty()) {
        streams.err << "zomrel-shop: the plan has errors: " << path << '\n';
        return storetools::Failure;
    }
    streams.out << "no errors: " << path << '\n';
    return storetools::Success;
}

} // namespace

const std::vector<Command>& commands()
{
    static const Option store{storeOption, u"PATH"_s};
    static const std::vector<Command> all{
        {u"pieces"_s,
         u"ORDER... [--store PATH]"_s,
         u"print the pieces of orders as CSV, one row for each"_s,
         {store},
         pieces},
        {u"plan"_s,
         u"ORDER... [--store PATH] --out FOLDER [--documents NAME,...] [--seconds S]"_s,
         u"plan the bars of orders and write the documents: "_s + documentNames(),
         {store,
          {outOption, u"FOLDER"_s, true},
          {documentsOption, u"NAME,..."_s},
          {secondsOption, u"S"_s}},
         plan},
        {u"settings"_s,
         u"--export FILE | --import FILE [--store PATH]"_s,
         u"export the settings of bars to a CSV file, or import them"_s,
         {store, {exportOption, u"FILE"_s}, {importOption, u"FILE"_s}},
         settings},
        {u"check"_s,
         u"PLAN.json [--store PATH]"_s,
         u"check a plan; with a store also that it contains every piece once"_s,
         {store},
         check},
    };
    return all;
}

} // namespace shoptools
