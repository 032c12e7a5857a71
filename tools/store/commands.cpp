#include "tools/store/commands.h"

#include "platform/runtime/run_time_error.h"
#include "store/schema.h"
#include "tools/store/address.h"
#include "tools/store/backup.h"
#include "tools/store/backup_command.h"
#include "tools/store/builder.h"
#include "tools/store/checker.h"
#include "tools/store/history.h"
#include "tools/store/import_command.h"
#include "tools/store/language.h"
#include "tools/store/link_store.h"
#include "tools/store/move.h"
#include "tools/store/progress.h"
#include "tools/store/reporting.h"
#include "tools/store/server_safety.h"
#include "tools/store/server_setup.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

const QString fileOption = u"--file"_s;
const QString serverOption = u"--server"_s;
const QString databaseOption = u"--database"_s;
const QString userOption = u"--user"_s;
const QString tlsOption = u"--tls"_s;
const QString figuresOption = u"--figures"_s;
const QString stationOption = u"--station"_s;

/// Prints what a server's settings leave unprotected without endangering confirmed rows.
void warn(const Safety& safety, QTextStream& err)
{
    for (const QString& each : safety.remarks)
        err << "zomrel-store: warning: " << each << '\n';
}

ExitStatus create(const Call& call, QTextStream& out, QTextStream&)
{
    const QString& path = call.arguments.first();
    createStore(path);
    out << inUsersLanguage(u"created %1"_s, u"%1 נוצר"_s).arg(path) << '\n';
    return Success;
}

ExitStatus check(const Call& call, QTextStream& out, QTextStream& err)
{
    const QString& name = call.arguments.first();
    const bool withFigures = call.options.contains(figuresOption);
    CheckReport report;
    try {
        const Place place(name);
        report = checkReport(place, withFigures ? Figures::Computed : Figures::Skipped);
        const Safety safety = safetyOf(place);
        if (!isForced(call))
            report.findings += safety.hazards;
        warn(safety, err);
    } catch (const runtime::RunTimeError& error) {
        // Parsing the location fails for a damaged link, before the check can start.
        report.findings.append(u"file: "_s + error.description());
    }
    print(out, report.findings);
    for (const QString& remark : report.remarks)
        out << "remark: " << remark << '\n';
    if (!report.findings.isEmpty())
        return Failure;
    out << inUsersLanguage(u"sound and complete: %1"_s, u"תקין ושלם: %1"_s).arg(name) << '\n';
    return Success;
}

ExitStatus restore(const Call& call, QTextStream& out, QTextStream& err)
{
    const QStringList& arguments = call.arguments;
    if (!isLeft(arguments[1], call, err))
        return Failure;
    const RestoreOutcome outcome = withProgress(err, [&](const RowsOfTable& progress) {
        return restoreStore(Place(arguments[0]), Place(arguments[1]),
                            isForced(call) ? Oddities::Accepted : Oddities::Refused, progress);
    });
    if (!outcome.findings.isEmpty())
        return notSound(outcome.findings, err);
    out << inUsersLanguage(u"restored %1 from %2"_s, u"%1 שוחזר מתוך %2"_s)
               .arg(arguments[1], arguments[0])
        << '\n';
    if (!outcome.kept.isEmpty())
        out << inUsersLanguage(u"the store before is kept as %1"_s,
                               u"קובץ הנתונים הקודם נשמר בשם %1"_s)
                   .arg(outcome.kept)
            << '\n';
    print(out, outcome.notes);
    return Success;
}

ExitStatus move(const Call& call, QTextStream& out, QTextStream& err)
{
    const QStringList& arguments = call.arguments;
    const Place to(arguments[1]);
    if (to.isOnServer() && !isForced(call))
        requireDurable(*to.open());
    const MoveOutcome outcome = withProgress(err, [&](const RowsOfTable& progress) {
        return moveStore(Place(arguments[0]), to, progress);
    });
    warn(safetyOf(to), err);
    if (!outcome.findings.isEmpty()) {
        print(err, outcome.findings);
        err << inUsersLanguage(u"zomrel-store: the store is not complete; nothing was moved\n"_s,
                               u"zomrel-store: בסיס הנתונים אינו שלם; דבר לא הועבר\n"_s);
        return Failure;
    }
    print(out, outcome.notes);
    Counts counts(out);
    for (const store::TableSchema& table : store::schema())
        counts.add(table.name, outcome.contents.at(table.name).rows);
    for (const auto& [table, contents] : outcome.contents) {
        if (store::tableSchema(table) == nullptr)
            counts.add(table, contents.rows);
    }
    out << "moved " << arguments[0] << " to " << arguments[1]
        << "; both hold the same rows in all tables\n";
    return Success;
}

/// The options without which a link to a database is incomplete.
const QStringList& databaseOptions()
{
    static const QStringList all{serverOption, databaseOption, userOption};
    return all;
}

std::vector<Option> linkOptions()
{
    return {
        {serverOption, u"HOST[:PORT]"_s, u"name, address or socket folder of the server"_s},
        {databaseOption, u"NAME"_s, u"name of the database"_s},
        {userOption, u"NAME"_s, u"role that logs in"_s},
        {tlsOption, u"MODE"_s, u"disable, allow, prefer, require, verify-ca, verify-full"_s},
        {forceOption, {}, u"accept a server that may lose stored rows"_s},
        {fileOption, u"STORE"_s, u"instead of a server: path of a store in another folder"_s},
    };
}

/// Checks that the options name either a file or a database. Throws WrongCall otherwise.
void checkLinkOptions(const Call& call)
{
    const bool toFile = call.options.contains(fileOption);
    if (toFile && call.options.value(fileOption).isEmpty())
        throw WrongCall(u"--file takes STORE"_s);
    for (const QString& each : databaseOptions() + QStringList(tlsOption)) {
        const bool isGiven = call.options.contains(each);
        if (toFile && isGiven)
            throw WrongCall(u"link takes either --file or %1"_s.arg(each));
        if (!toFile && !isGiven && databaseOptions().contains(each))
            throw WrongCall(u"link takes %1, or --file"_s.arg(each));
    }
}

/// Builds a link from the options. Throws WrongCall if the options do not form a valid link.
dao::Link linkOf(const Call& call)
{
    checkLinkOptions(call);
    try {
        if (call.options.contains(fileOption)) {
            dao::Link link = dao::Link::toFile(call.options.value(fileOption));
            dao::linkText(link);
            return link;
        }
        dao::Link link = parseServer(call.options.value(serverOption));
        link.database = call.options.value(databaseOption);
        link.user = call.options.value(userOption);
        link.tls = call.options.value(tlsOption, link.tls);
        dao::linkText(link);
        return link;
    } catch (const runtime::RunTimeError& error) {
        throw WrongCall(error.description());
    }
}

ExitStatus link(const Call& call, QTextStream& out, QTextStream& err)
{
    const QString& path = call.arguments.first();
    const dao::Link link = linkOf(call);
    const LinkedTo found =
        linkStore(path, link, isForced(call) ? Hazards::Accepted : Hazards::Refused);
    out << "linked " << path << " to " << link.place() << '\n';
    if (found == LinkedTo::NoStoreYet)
        out << "there is no store in that database yet; zomrel-store move brings one there\n";
    warn(safetyOf(Place(path)), err);
    return Success;
}

ExitStatus printServerSetup(const Call& call, QTextStream& out, QTextStream&)
{
    out << serverSetup(stationRoles(call.options.value(stationOption, u"zomrel_station"_s)));
    return Success;
}

std::vector<Command> commandsOverOneEngine()
{
    return {
        {u"create"_s, {u"FILE"_s}, u"create a new store with the delivered catalogue"_s, create},
        {u"check"_s,
         {u"FILE"_s},
         u"check a store and print one line for each finding"_s,
         check,
         {{figuresOption, {}, u"compute all lines again and compare their figures"_s},
          {forceOption, {}, u"accept a server that may lose stored rows"_s}}},
        backupCommand(),
        {u"restore"_s,
         {u"BACKUP"_s, u"FILE"_s},
         u"replace a store by a sound backup; the old store is kept"_s,
         restore,
         {{forceOption, {}, u"ignore connected stations and findings that keep all rows"_s}}},
        importCommand(),
    };
}

std::vector<Command> commandsAroundAServer()
{
    return {
        {u"move"_s,
         {u"FROM"_s, u"TO"_s},
         u"copy a whole store between a file and a server's database"_s,
         move,
         {{forceOption, {}, u"accept a server that may lose stored rows"_s}}},
        {u"link"_s,
         {u"FILE"_s},
         u"write a link to a server's database or to a store in another folder"_s,
         link,
         linkOptions()},
        {u"server-setup"_s,
         {},
         u"print the SQL that prepares a server's database"_s,
         printServerSetup,
         {{stationOption, u"NAME[,NAME]"_s, u"roles of the stations; default zomrel_station"_s}}},
        historyCommand(),
    };
}

} // namespace

const std::vector<Command>& commands()
{
    static const std::vector<Command> all = [] {
        std::vector<Command> both = commandsOverOneEngine();
        for (Command& each : commandsAroundAServer())
            both.push_back(std::move(each));
        return both;
    }();
    return all;
}

} // namespace storetools
