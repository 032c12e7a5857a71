#include "tools/store/backup_command.h"

#include "platform/runtime/process.h"
#include "tools/store/daily_backup.h"
#include "tools/store/language.h"
#include "tools/store/progress.h"
#include "tools/store/reporting.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

const QString dailyOption = u"--daily"_s;
const QString statusOption = u"--status"_s;

/// Reports why a backup, whose rows are complete, cannot be restored.
void warnOf(const QStringList& findings, QTextStream& err)
{
    constexpr qsizetype mostShown = 20;
    for (const QString& each : findings.first(std::min(mostShown, findings.size())))
        err << "restore would refuse this backup: " << each << '\n';
    if (findings.size() > mostShown)
        err << "and " << findings.size() - mostShown << " more findings\n";
}

ExitStatus backUpOnce(const Call& call, QTextStream& out, QTextStream& err)
{
    const QStringList& arguments = call.arguments;
    const BackupOutcome outcome = withProgress(err, [&](const RowsOfTable& progress) {
        return backUpStore(Place(arguments[0]), arguments[1], progress);
    });
    if (!outcome.findings.isEmpty())
        return notSound(outcome.findings, err);
    out << inUsersLanguage(u"backed up %1 to %2"_s, u"%1 גובה אל %2"_s)
               .arg(arguments[0], arguments[1])
        << '\n';
    warnOf(outcome.warnings, err);
    return Success;
}

void reportRemoved(const DailyOutcome& outcome, QTextStream& out, QTextStream& err)
{
    for (const QString& name : outcome.removed)
        out << inUsersLanguage(u"removed the old backup %1"_s, u"הגיבוי הישן %1 נמחק"_s).arg(name)
            << '\n';
    for (const QString& name : outcome.notRemoved)
        err << inUsersLanguage(
                   u"zomrel-store: could not remove the old backup %1; remove it yourself"_s,
                   u"zomrel-store: אי אפשר היה למחוק את הגיבוי הישן %1; מחק אותו בעצמך"_s)
                   .arg(name)
            << '\n';
}

ExitStatus backUpToday(const Call& call, QTextStream& out, QTextStream& err)
{
    const QString store = call.arguments.size() > 1 ? call.arguments.first() : defaultStore();
    const DailyOutcome outcome = withProgress(err, [&](const RowsOfTable& progress) {
        return backUpDaily(Place(store), call.arguments.last(), runtime::Today(), progress);
    });
    if (!outcome.otherStore.isEmpty()) {
        err << inUsersLanguage(u"zomrel-store: %1 in this folder is a backup of another store; "
                               "nothing was backed up. Give each store a folder of its own"_s,
                               u"zomrel-store: הקובץ %1 בתיקייה הזאת הוא גיבוי של קובץ נתונים "
                               "אחר; לא נעשה גיבוי. תן לכל קובץ נתונים תיקייה משלו"_s)
                   .arg(outcome.otherStore)
            << '\n';
        return Failure;
    }
    if (!outcome.setAside.isEmpty())
        err << inUsersLanguage(u"zomrel-store: today's backup was damaged; it is kept as %1"_s,
                               u"zomrel-store: הגיבוי של היום היה פגום; הוא נשמר בשם %1"_s)
                   .arg(outcome.setAside)
            << '\n';
    if (!outcome.backup.findings.isEmpty())
        return notSound(outcome.backup.findings, err);
    if (outcome.wasThere)
        out << inUsersLanguage(u"nothing to do: today's backup %1 is there and good"_s,
                               u"אין מה לעשות: הגיבוי של היום, %1, קיים ותקין"_s)
                   .arg(outcome.path)
            << '\n';
    else
        out << inUsersLanguage(u"backed up %1 to %2"_s, u"%1 גובה אל %2"_s).arg(store, outcome.path)
            << '\n';
    warnOf(outcome.backup.warnings, err);
    reportRemoved(outcome, out, err);
    return Success;
}

QString ageText(const QDate& day)
{
    const qint64 days = day.daysTo(runtime::Today());
    if (days < 0)
        return inUsersLanguage(u"dated in the future; check this computer's clock"_s,
                               u"התאריך שלו בעתיד; בדוק את השעון של המחשב"_s);
    if (days == 0)
        return inUsersLanguage(u"from today"_s, u"מהיום"_s);
    if (days == 1)
        return inUsersLanguage(u"1 day old"_s, u"בן יום אחד"_s);
    return inUsersLanguage(u"%1 days old"_s, u"בן %1 ימים"_s).arg(days);
}

ExitStatus printStatus(const Call& call, QTextStream& out, QTextStream& err)
{
    const QString& folder = call.arguments.first();
    const DailyStatus status = dailyStatus(folder);
    for (const QString& name : status.damaged)
        err << inUsersLanguage(u"damaged: %1"_s, u"פגום: %1"_s).arg(name) << '\n';
    if (!status.newestGood) {
        err << inUsersLanguage(u"zomrel-store: there is no good backup in '%1'; make one with "
                               "zomrel-store backup --daily"_s,
                               u"zomrel-store: אין גיבוי תקין בתיקייה '%1'; צור אחד בעזרת "
                               "zomrel-store backup --daily"_s)
                   .arg(folder)
            << '\n';
        return Failure;
    }
    out << inUsersLanguage(u"newest good backup: %1, %2; %3 in all"_s,
                           u"הגיבוי התקין החדש ביותר: %1, %2; בסך הכול %3"_s)
               .arg(QFileInfo(status.newestGood->path).fileName(), ageText(status.newestGood->day))
               .arg(status.count)
        << '\n';
    warnOf(status.newestGood->warnings, err);
    return Success;
}

ExitStatus backup(const Call& call, QTextStream& out, QTextStream& err)
{
    const bool isDaily = call.options.contains(dailyOption);
    const bool isStatus = call.options.contains(statusOption);
    if (isDaily && isStatus)
        throw WrongCall(u"backup takes either --daily or --status"_s);
    if (isStatus)
        return printStatus(call, out, err);
    return isDaily ? backUpToday(call, out, err) : backUpOnce(call, out, err);
}

} // namespace

Command backupCommand()
{
    return {u"backup"_s,
            {u"FILE"_s, u"TO"_s},
            u"copy a store to a new file; stations may keep working"_s,
            backup,
            {{dailyOption,
              {},
              u"make today's backup unless it is there; keep the newest 30"_s,
              {u"[STORE]"_s, u"FOLDER"_s}},
             {statusOption, {}, u"tell the age of the newest good daily backup"_s, {u"FOLDER"_s}}}};
}

} // namespace storetools
