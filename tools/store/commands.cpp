#include "tools/store/commands.h"

#include "platform/runtime/run_time_error.h"
#include "store/schema.h"
#include "tools/store/address.h"
#include "tools/store/advice.h"
#include "tools/store/backup.h"
#include "tools/store/backup_command.h"
#include "tools/store/builder.h"
#include "tools/store/checker.h"
#include "tools/store/engine_words.h"
#include "tools/store/history.h"
#include "tools/store/import_command.h"
#include "tools/store/link_store.h"
#include "tools/store/move.h"
#include "tools/store/progress.h"
#include "tools/store/reporting.h"
#include "tools/store/server_safety.h"
#include "tools/store/server_setup.h"
#include "tools/store/shared_texts.h"

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

/// Prints a warning for each setting of a server because of which the server may not notice damaged
/// data. Settings because of which the server may lose rows are not printed here.
void warn(const Safety& safety, QTextStream& err)
{
    for (const QString& each : safety.remarks)
        tell(err, say({u"warning: %1", u"אזהרה: %1"}, Phrase{each}));
}

ExitStatus create(const Call& call, QTextStream& out, QTextStream&)
{
    const QString& path = call.arguments.first();
    createStore(path);
    out << say({u"created %1", u"%1 נוצר"}, path) << '\n';
    return Success;
}

/// Prints the result of a check.
ExitStatus printReport(const QString& name, const CheckReport& report, QTextStream& out,
                       QTextStream& err)
{
    print(out, report.findings);
    for (const QString& remark : report.remarks)
        out << say({u"remark: %1", u"הערה: %1"}, Phrase{remark}) << '\n';
    if (report.findings.isEmpty()) {
        out << say({u"sound and complete: %1", u"תקין ושלם: %1"}, name) << '\n';
        return Success;
    }
    tellNextStep(err, report.nextStep.isEmpty()
                          ? say({u"Keep a copy of the store, and restore a sound backup with "
                                 "zomrel-store restore. If there is none, keep these lines and "
                                 "ask for support.",
                                 u"שמור עותק של קובץ הנתונים, ושחזר גיבוי תקין בפקודה "
                                 "{zomrel-store restore}. אם אין גיבוי, שמור את השורות האלה ופנה "
                                 "לתמיכה."})
                          : report.nextStep);
    return Failure;
}

QString figureAdvice()
{
    return say(
        {u"Compare these lines with their series, and decide which is right: a series may have "
         "been changed since.",
         u"השווה את השורות האלה לסדרות שלהן, והחלט מה נכון: ייתכן שסדרה שונתה מאז."});
}

/// Adds what the server's settings endanger.
void addSafety(const Place& place, const Call& call, CheckReport& report, QTextStream& err)
{
    const Safety safety = safetyOf(place);
    warn(safety, err);
    if (isForced(call))
        return;
    if (report.findings.isEmpty())
        report.nextStep = adviceForServer();
    report.findings += safety.hazards;
}

ExitStatus check(const Call& call, QTextStream& out, QTextStream& err)
{
    const QString& name = call.arguments.first();
    const bool withFigures = call.options.contains(figuresOption);
    CheckReport report;
    try {
        const Place place(name);
        report = checkReport(place, withFigures ? Figures::Computed : Figures::Skipped);
        if (report.findings.size() == report.figureFindings)
            report.nextStep = figureAdvice();
        addSafety(place, call, report, err);
    } catch (const runtime::RunTimeError& error) {
        // The constructor of Place throws if the store is named by a damaged link file. The check
        // has not started then, but the error is reported like an error that the check finds.
        report.findings.append(ofWhole(false, happened(error)));
        report.nextStep = nextStep(error);
    }
    return printReport(name, report, out, err);
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
        return notSound(err, outcome.findings,
                        say({u"the backup is not sound; nothing was changed",
                             u"הגיבוי אינו תקין; לא השתנה דבר"}),
                        say({u"Choose another backup. The option --force restores this one if all "
                             "its rows can be read.",
                             u"בחר גיבוי אחר. האפשרות {--force} משחזרת גם את הגיבוי הזה, אם אפשר "
                             "לקרוא את כל השורות שבו."}));
    out << say({u"restored %1 from %2", u"%1 שוחזר מתוך %2"}, arguments[1], arguments[0]) << '\n';
    if (!outcome.kept.isEmpty())
        out << say({u"the store before is kept as %1", u"קובץ הנתונים הקודם נשמר בשם %1"},
                   outcome.kept)
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
    if (!outcome.findings.isEmpty())
        return notSound(
            err, outcome.findings,
            say({u"the store is not complete; nothing was moved",
                 u"קובץ הנתונים אינו שלם; לא הועבר דבר"}),
            say({u"Restore a sound backup with zomrel-store restore, and move that one.",
                 u"שחזר גיבוי תקין בפקודה {zomrel-store restore}, והעבר אותו."}));
    print(out, outcome.notes);
    Counts counts(out);
    for (const store::TableSchema& table : store::schema())
        counts.add(table.name, outcome.contents.at(table.name).rows);
    for (const auto& [table, contents] : outcome.contents) {
        if (store::tableSchema(table) == nullptr)
            counts.add(table, contents.rows);
    }
    out << say({u"moved %1 to %2; both hold the same rows in all tables",
                u"%1 הועבר אל %2; בשניהם אותן רשומות בכל הטבלאות"},
               arguments[0], arguments[1])
        << '\n';
    return Success;
}

/// Returns the names of the options that the command `link` requires for a link to a server's
/// database.
const QStringList& databaseOptions()
{
    static const QStringList all{serverOption, databaseOption, userOption};
    return all;
}

std::vector<Option> linkOptions()
{
    return {
        {serverOption,
         u"HOST[:PORT]"_s,
         {u"name, address or socket folder of the server",
          u"שם השרת, הכתובת שלו או תיקיית השקע שלו"}},
        {databaseOption, u"NAME"_s, {u"name of the database", u"שם המסד"}},
        {userOption, u"NAME"_s, {u"role that logs in", u"המשתמש שנכנס לשרת"}},
        {tlsOption,
         u"MODE"_s,
         {u"disable, allow, prefer, require, verify-ca, verify-full",
          u"הצפנה: {disable}, {allow}, {prefer}, {require}, {verify-ca}, {verify-full}"}},
        {forceOption, {}, acceptUnsafeServer},
        {fileOption,
         u"STORE"_s,
         {u"instead of a server: path of a store in another folder",
          u"במקום שרת: נתיב של קובץ נתונים בתיקייה אחרת"}},
    };
}

/// Checks that the options of the command `link` name either a file or a database. Throws WrongCall
/// otherwise.
void checkLinkOptions(const Call& call)
{
    const bool toFile = call.options.contains(fileOption);
    if (toFile && call.options.value(fileOption).isEmpty())
        throw WrongCall(say(takes, fileOption, u"STORE"_s));
    for (const QString& each : databaseOptions() + QStringList(tlsOption)) {
        const bool isGiven = call.options.contains(each);
        if (toFile && isGiven)
            throw WrongCall(say({u"link takes either --file or %1",
                                 u"אחרי {link} כותבים {--file} או %1, לא את שניהם"},
                                each));
        if (!toFile && !isGiven && databaseOptions().contains(each))
            throw WrongCall(
                say({u"link takes %1, or --file", u"אחרי {link} כותבים %1 או {--file}"}, each));
    }
}

/// Returns the data of the link file that the command `link` writes, taken from the options of the
/// command. Throws WrongCall if the options do not form a valid link.
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
        throw WrongCall(happened(error));
    }
}

ExitStatus link(const Call& call, QTextStream& out, QTextStream& err)
{
    const QString& path = call.arguments.first();
    const dao::Link link = linkOf(call);
    const LinkedTo found =
        linkStore(path, link, isForced(call) ? Hazards::Accepted : Hazards::Refused);
    out << say({u"linked %1 to %2", u"%1 מקושר אל %2"}, path, Phrase{placeInWords(link.place())})
        << '\n';
    if (found == LinkedTo::NoStoreYet)
        out << say({u"there is no store in that database yet; zomrel-store move brings one there",
                    u"במסד הזה עוד אין נתונים של זומרל; הפקודה {zomrel-store move} מעבירה לשם"})
            << '\n';
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
        {u"create"_s,
         {u"FILE"_s},
         {u"create a new store with the delivered catalogue",
          u"ליצור קובץ נתונים חדש עם הקטלוג המצורף"},
         create},
        {u"check"_s,
         {u"FILE"_s},
         {u"check a store and print one line for each finding",
          u"לבדוק את קובץ הנתונים ולכתוב שורה לכל ליקוי"},
         check,
         {{figuresOption,
           {},
           {u"compute all lines again and compare their figures",
            u"לחשב מחדש את כל השורות ולהשוות את המידות"}},
          {forceOption, {}, acceptUnsafeServer}}},
        backupCommand(),
        {u"restore"_s,
         {u"BACKUP"_s, u"FILE"_s},
         {u"replace a store by a sound backup; the old store is kept",
          u"להחליף את קובץ הנתונים בגיבוי תקין; הקובץ הקודם נשמר"},
         restore,
         {{forceOption,
           {},
           {u"ignore connected stations and findings that keep all rows",
            u"גם כשיש עמדות מחוברות, או ליקויים שאינם פוגעים בשורות"}}}},
        importCommand(),
    };
}

std::vector<Command> commandsAroundAServer()
{
    return {
        {u"move"_s,
         {u"FROM"_s, u"TO"_s},
         {u"copy a whole store between a file and a server's database",
          u"להעתיק את כל הנתונים מקובץ למסד בשרת, או בחזרה"},
         move,
         {{forceOption, {}, acceptUnsafeServer}}},
        {u"link"_s,
         {u"FILE"_s},
         {u"write a link to a server's database or to a store in another folder",
          u"לכתוב קישור למסד בשרת או לקובץ נתונים בתיקייה אחרת"},
         link,
         linkOptions()},
        {u"server-setup"_s,
         {},
         {u"print the SQL that prepares a server's database",
          u"להדפיס את ה-{SQL} שמכין את המסד בשרת"},
         printServerSetup,
         {{stationOption,
           u"NAME[,NAME]"_s,
           {u"roles of the stations; default zomrel_station",
            u"שמות המשתמשים של העמדות; בלי זה {zomrel_station}"}}}},
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
