#include "tools/store/daily_backup.h"

#include "platform/dao/database.h"
#include "platform/dao/table_copy.h"
#include "platform/runtime/durable_file.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/advice.h"
#include "tools/store/checker.h"
#include "tools/store/shared_texts.h"
#include "tools/store/told_error.h"

#include <QDir>
#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

const QString namePrefix = u"zomrel-"_s;
const QString nameSuffix = u".mdb"_s;

/// Returns the date in the file name of a daily backup, or an invalid date for any other file name.
QDate dayOf(const QString& name)
{
    if (!name.startsWith(namePrefix) || !name.endsWith(nameSuffix))
        return {};
    const QString day = name.mid(namePrefix.size()).chopped(nameSuffix.size());
    const QDate date = QDate::fromString(day, Qt::ISODate);
    // Qt also accepts other spellings of an ISO date, so the file name is compared with the name
    // that the program itself would give.
    return date.isValid() && dailyBackupName(date) == name ? date : QDate();
}

/// Throws PermissionDenied (3051) if the folder does not exist. The function does not create the
/// folder, because it may be the mount point of a disk that is not connected.
void requireFolder(const QString& folder)
{
    if (!QFileInfo(folder).isDir())
        throw ToldError(
            runtime::PermissionDenied,
            say({u"The folder '%1' does not exist.", u"התיקייה '%1' אינה קיימת."}, folder),
            say({u"Create it, or connect its disk, and try again.",
                 u"צור אותה, או חבר את הדיסק שלה, ונסה שוב."}));
}

/// Returns the file names of all daily backups in the folder, the newest one first.
QStringList backupsIn(const QString& folder)
{
    QStringList names;
    for (const QString& name : QDir(folder).entryList(QDir::Files | QDir::Hidden)) {
        if (dayOf(name).isValid())
            names.append(name);
    }
    // All file names of daily backups have the same length and contain the date as year, month,
    // day, so sorting the names sorts the dates.
    std::sort(names.begin(), names.end(), std::greater<>());
    return names;
}

/// Checks a backup and returns the report. If the file cannot be opened, the report contains a
/// finding that prevents copying.
CheckReport reportOf(const QString& path)
{
    try {
        return checkReport(Place(path), Figures::Skipped);
    } catch (const RunTimeError& error) {
        return {{happened(error)}, {happened(error)}, {}, nextStep(error)};
    }
}

bool isGood(const QString& path)
{
    return reportOf(path).preventCopying.isEmpty();
}

/// Returns the identity of a store (a random text), or an empty text if the store has no identity
/// or cannot be read.
QString identityOf(const QString& name)
{
    try {
        return dao::storeIdentity(*Place(name).open());
    } catch (const RunTimeError&) {
        return {};
    }
}

/// Returns true if the backup at `path` may belong to the store with the identity `store`. Returns
/// false only if both identities are known and differ.
bool mayBeOf(const QString& path, const QString& store)
{
    const QString identity = identityOf(path);
    return identity.isEmpty() || store.isEmpty() || identity == store;
}

/// Searches the folder for a backup that belongs to another store, from the newest backup to the
/// oldest. Returns its file name, or an empty text if none is found. The search ends at the first
/// good backup of this store, so older backups are ignored.
QString backupOfAnotherStore(const QString& folder, const QString& store)
{
    for (const QString& name : backupsIn(folder)) {
        const QString path = QDir(folder).filePath(name);
        if (!mayBeOf(path, store))
            return name;
        if (isGood(path))
            break;
    }
    return {};
}

/// Renames a damaged backup to a free name. Returns the path with the new name.
QString setAside(const QString& path)
{
    QString aside = path + u".damaged"_s;
    for (int number = 2; QFileInfo::exists(aside); ++number)
        aside = u"%1.damaged.%2"_s.arg(path).arg(number);
    letGoOfFiles(); // The check of the backup has opened it.
    runtime::durableMove(path, aside);
    return aside;
}

/// Removes the oldest good backups of this store, so that the newest keptDailyBackups ones remain.
/// Damaged backups and backups of another store are neither counted nor removed.
void removeOld(const QString& folder, const QDate& today, const QString& store,
               DailyOutcome& outcome)
{
    QStringList names = backupsIn(folder);
    // Today's backup is never removed. Without this exception, the backup that was just made would
    // be removed if the clock has been set back.
    names.removeOne(dailyBackupName(today));
    if (names.size() < keptDailyBackups)
        return;   // Nothing has to be read.
    int kept = 1; // Today's.
    for (const QString& name : names) {
        const QString path = QDir(folder).filePath(name);
        if (!isGood(path) || !mayBeOf(path, store) || ++kept <= keptDailyBackups)
            continue;
        letGoOfFiles(); // The checks have opened it.
        (QFile::remove(path) ? outcome.removed : outcome.notRemoved).append(name);
    }
}

} // namespace

QString dailyBackupName(const QDate& day)
{
    return namePrefix + day.toString(Qt::ISODate) + nameSuffix;
}

DailyOutcome backUpDaily(const Place& place, const QString& folder, const QDate& today,
                         const RowsOfTable& progress)
{
    requireFolder(folder);
    const QString store = identityOf(place.name());
    DailyOutcome outcome;
    outcome.otherStore = backupOfAnotherStore(folder, store);
    if (!outcome.otherStore.isEmpty())
        return outcome;
    outcome.path = QDir(folder).filePath(dailyBackupName(today));
    if (QFileInfo::exists(outcome.path)) {
        outcome.wasThere = isGood(outcome.path);
        if (outcome.wasThere)
            return outcome;
        outcome.setAside = setAside(outcome.path);
    }
    outcome.backup = backUpStore(place, outcome.path, progress);
    if (!outcome.backup.findings.isEmpty())
        return outcome;
    if (!isGood(outcome.path))
        throw ToldError(runtime::CorruptDatabase,
                        say({u"The backup was written, but reading it back failed. It is kept as "
                             "'%1'.",
                             u"הגיבוי נכתב, אבל הקריאה שלו בחזרה נכשלה. הוא נשמר בשם '%1'."},
                            setAside(outcome.path)),
                        say(checkTheDisk));
    removeOld(folder, today, store, outcome);
    return outcome;
}

DailyStatus dailyStatus(const QString& folder)
{
    requireFolder(folder);
    const QStringList names = backupsIn(folder);
    DailyStatus status;
    status.count = int(names.size());
    for (const QString& name : names) {
        const QString path = QDir(folder).filePath(name);
        const CheckReport report = reportOf(path);
        if (report.preventCopying.isEmpty()) {
            status.newestGood = NewestBackup{path, dayOf(name), report.findings};
            break;
        }
        status.damaged.append(name);
    }
    return status;
}

} // namespace storetools
