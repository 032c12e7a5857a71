#include "tools/store/backup_command.h"

#include "platform/runtime/process.h"
#include "tools/store/daily_backup.h"
#include "tools/store/progress.h"
#include "tools/store/reporting.h"
#include "tools/store/shared_texts.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

const QString dailyOption = u"--daily"_s;
const QString statusOption = u"--status"_s;

/// Prints the errors because of which a restore would refuse this backup. The rows of the backup
/// are complete nevertheless.
void warnOf(const QStringList& findings, QTextStream& err)
{
    constexpr qsizetype mostShown = 20;
    for (const QString& each : findings.first(std::min(mostShown, findings.size())))
        err << say({u"restore would refuse this backup: %1",
                    u"הפקודה {restore} תסרב לגיבוי הזה: %1"},
                   Phrase{each})
            << '\n';
    if (findings.size() > mostShown)
        err << say({u"and %1 more findings", u"ועוד ליקויים: %1"}, findings.size() - mostShown)
            << '\n';
    if (!findings.isEmpty())
        tellNextStep(err, say({u"Run zomrel-store check on the store, and mend it soon. Until then "
                               "keep the older backups, and restore this one with --force only.",
                               u"הרץ {zomrel-store check} על קובץ הנתונים, ותקן אותו בקרוב. עד אז "
                               "שמור את הגיבויים הישנים. את הגיבוי הזה אפשר לשחזר רק עם "
                               "{--force}."}));
}

ExitStatus notBackedUp(const QStringList& findings, QTextStream& err)
{
    return notSound(err, findings,
                    say({u"the store is not sound; nothing was changed",
                         u"קובץ הנתונים אינו תקין; לא השתנה דבר"}),
                    say({u"Keep the store and the last sound backup. Restore that backup with "
                         "zomrel-store restore, or ask for support.",
                         u"שמור את קובץ הנתונים ואת הגיבוי התקין האחרון. שחזר את הגיבוי בפקודה "
                         "{zomrel-store restore}, או פנה לתמיכה."}));
}

ExitStatus backUpOnce(const Call& call, QTextStream& out, QTextStream& err)
{
    const QStringList& arguments = call.arguments;
    const BackupOutcome outcome = withProgress(err, [&](const RowsOfTable& progress) {
        return backUpStore(Place(arguments[0]), arguments[1], progress);
    });
    if (!outcome.findings.isEmpty())
        return notBackedUp(outcome.findings, err);
    out << say(backedUp, arguments[0], arguments[1]) << '\n';
    warnOf(outcome.warnings, err);
    return Success;
}

void reportRemoved(const DailyOutcome& outcome, QTextStream& out, QTextStream& err)
{
    for (const QString& name : outcome.removed)
        out << say({u"removed the old backup %1", u"הגיבוי הישן %1 נמחק"}, name) << '\n';
    for (const QString& name : outcome.notRemoved)
        tell(err,
             say({u"could not remove the old backup %1", u"אי אפשר היה למחוק את הגיבוי הישן %1"},
                 name));
    if (!outcome.notRemoved.isEmpty())
        tellNextStep(err, say({u"Remove what the lines above name yourself.",
                               u"מחק בעצמך את מה שכתוב בשורות שלמעלה."}));
}

/// Prints that today's backup was damaged, and the name under which the damaged file is kept.
void warnOfSetAside(const QString& path, QTextStream& err)
{
    if (path.isEmpty())
        return;
    tell(err, say({u"today's backup was damaged; it is kept as %1",
                   u"הגיבוי של היום היה פגום; הוא נשמר בשם %1"},
                  path));
    tellNextStep(err, say({u"Check the disk of the backups. Remove the damaged file once the other "
                           "backups are good.",
                           u"בדוק את הדיסק של הגיבויים. מחק את הקובץ הפגום כששאר הגיבויים "
                           "תקינים."}));
}

ExitStatus backUpToday(const Call& call, QTextStream& out, QTextStream& err)
{
    const QString store = call.arguments.size() > 1 ? call.arguments.first() : defaultStore();
    const DailyOutcome outcome = withProgress(err, [&](const RowsOfTable& progress) {
        return backUpDaily(Place(store), call.arguments.last(), runtime::Today(), progress);
    });
    if (!outcome.otherStore.isEmpty())
        return fail(
            err,
            say({u"%1 in this folder is a backup of another store; nothing was backed up",
                 u"הקובץ %1 בתיקייה הזאת הוא גיבוי של קובץ נתונים אחר; לא נעשה גיבוי"},
                outcome.otherStore),
            say({u"Give each store a folder of its own.", u"תן לכל קובץ נתונים תיקייה משלו."}));
    warnOfSetAside(outcome.setAside, err);
    if (!outcome.backup.findings.isEmpty())
        return notBackedUp(outcome.backup.findings, err);
    if (outcome.wasThere)
        out << say({u"nothing to do: today's backup %1 is there and good",
                    u"אין מה לעשות: הגיבוי של היום, %1, קיים ותקין"},
                   outcome.path)
            << '\n';
    else
        out << say(backedUp, store, outcome.path) << '\n';
    warnOf(outcome.backup.warnings, err);
    reportRemoved(outcome, out, err);
    return Success;
}

QString ageText(const QDate& day)
{
    const qint64 days = day.daysTo(runtime::Today());
    if (days < 0)
        return say({u"dated in the future; check this computer's clock",
                    u"התאריך שלו בעתיד; בדוק את השעון של המחשב"});
    if (days == 0)
        return say({u"from today", u"מהיום"});
    if (days == 1)
        return say({u"1 day old", u"בן יום אחד"});
    return say({u"%1 days old", u"בן %1 ימים"}, days);
}

ExitStatus printStatus(const Call& call, QTextStream& out, QTextStream& err)
{
    const QString& folder = call.arguments.first();
    const DailyStatus status = dailyStatus(folder);
    for (const QString& name : status.damaged)
        err << say({u"damaged: %1", u"פגום: %1"}, name) << '\n';
    if (!status.newestGood)
        return fail(
            err, say({u"there is no good backup in '%1'", u"אין גיבוי תקין בתיקייה '%1'"}, folder),
            say({u"Make one with zomrel-store backup --daily.",
                 u"צור אחד בעזרת {zomrel-store backup --daily}."}));
    out << say({u"newest good backup: %1, %2; %3 in all",
                u"הגיבוי התקין החדש ביותר: %1, %2; בסך הכול %3"},
               QFileInfo(status.newestGood->path).fileName(),
               Phrase{ageText(status.newestGood->day)}, status.count)
        << '\n';
    warnOf(status.newestGood->warnings, err);
    return Success;
}

ExitStatus backup(const Call& call, QTextStream& out, QTextStream& err)
{
    const bool isDaily = call.options.contains(dailyOption);
    const bool isStatus = call.options.contains(statusOption);
    if (isDaily && isStatus)
        throw WrongCall(say({u"backup takes either --daily or --status",
                             u"אחרי {backup} כותבים {--daily} או {--status}, לא את שניהם"}));
    if (isStatus)
        return printStatus(call, out, err);
    return isDaily ? backUpToday(call, out, err) : backUpOnce(call, out, err);
}

} // namespace

Command backupCommand()
{
    return {u"backup"_s,
            {u"FILE"_s, u"TO"_s},
            {u"copy a store to a new file; stations may keep working",
             u"להעתיק את הנתונים לקובץ חדש; העמדות יכולות להמשיך לעבוד"},
            backup,
            {{dailyOption,
              {},
              {u"make today's backup unless it is there; keep the newest 30",
               u"ליצור את הגיבוי של היום אם הוא חסר, ולשמור את 30 האחרונים"},
              {u"[STORE]"_s, u"FOLDER"_s}},
             {statusOption,
              {},
              {u"tell the age of the newest good daily backup",
               u"לכתוב בן כמה הגיבוי היומי התקין האחרון"},
              {u"FOLDER"_s}}}};
}

} // namespace storetools
