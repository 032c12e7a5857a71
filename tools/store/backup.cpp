#include "tools/store/backup.h"

#include "platform/dao/database.h"
#include "platform/dao/table_copy.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/checker.h"
#include "tools/store/move.h"
#include "tools/store/shared_texts.h"
#include "tools/store/told_error.h"
#include "tools/store/unfinished_file.h"

#include <QFileInfo>

#include <filesystem>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

/// The file name suffixes of the journals that SQLite creates beside a database file while the
/// database is being changed. A journal belongs to exactly one database file.
const QString rollbackJournal = u"-journal"_s;
const QString writeAheadLog = u"-wal"_s;

/// Writes a new generation text (a random text) to a store that is being replaced. A station that
/// still has the store open notices the replacement by this text and writes nothing more. Does
/// nothing if the store is too damaged to be changed.
void markAsReplaced(dao::Database& database)
{
    try {
        dao::renewStoreMark(database);
    } catch (const RunTimeError& error) {
        if (error.number() != runtime::CorruptDatabase)
            throw;
    }
}

/// Writes a new generation text (a random text) to the file `copy`, which is about to replace a
/// store. By this text, stations notice the replacement.
void renewMarkOf(const QString& copy)
{
    const auto database = dao::DBEngine::instance().OpenDatabase(copy);
    dao::renewStoreMark(*database);
    database->Close();
}

/// Locks a store, so that stations cannot write to it while it is replaced. A store that is too
/// damaged to open is not locked, because no station can work with it.
class Hold
{
public:
    explicit Hold(const QString& path)
    {
        if (!QFileInfo::exists(path))
            return;
        if (!runtime::openForReading(file_, path))
            throw ToldError(runtime::PermissionDenied, say(couldNotRead, path, qt_error_string()));
        try {
            database_ = dao::DBEngine::instance().OpenDatabase(path);
            markAsReplaced(*database_);
            database_->BeginTrans();
        } catch (const RunTimeError& error) {
            if (error.number() != runtime::UnrecognizedFormat &&
                error.number() != runtime::CorruptDatabase)
                throw;
            database_.reset();
        }
        // Opening a store removes its write-ahead log, unless a station uses the store. If the log
        // still exists after the opening, the store is therefore treated as locked.
        if (isHeld() && QFileInfo::exists(path + writeAheadLog))
            throw RunTimeError(runtime::Locked);
    }
    bool isHeld() const { return database_ != nullptr; }
    /// Returns the file of the store.
    QFile& file() { return file_; }

private:
    /// A descriptor of the store's file. It is opened before the store is locked and closed after
    /// the lock is released. No other descriptor of the file is opened in between, because closing
    /// one would release all locks of this process on the file.
    QFile file_;
    std::shared_ptr<dao::Database> database_;
};

/// Returns a free name for the old store: of PATH.before-restore, PATH.before-restore.2 and so on,
/// the first name that no file and no journal has. A killed restore may have left one of these
/// names as a hard link to the store at `path`. The function removes this link.
QString freeName(const QString& path)
{
    const QString first = path + u".before-restore"_s;
    const auto isTaken = [&path](const QString& name) {
        std::error_code error;
        if (std::filesystem::equivalent(QFileInfo(path).filesystemFilePath(),
                                        QFileInfo(name).filesystemFilePath(), error))
            QFile::remove(name);
        return QFileInfo::exists(name) || QFileInfo::exists(name + rollbackJournal) ||
               QFileInfo::exists(name + writeAheadLog);
    };
    QString name = first;
    for (int number = 2; isTaken(name); ++number)
        name = u"%1.%2"_s.arg(first).arg(number);
    return name;
}

/// Gives the old store a second name (hard link), so that the old store remains when the new store
/// replaces it under the first name. Copies the file instead if the file system does not permit a
/// second name. Returns the second name.
QString keep(const QString& path, Hold& hold)
{
    QString kept = freeName(path);
    if (runtime::durableLink(path, kept) == runtime::Linked::Done)
        return kept;
    UnfinishedFile copy(kept, runtime::Readers::OnlyOwner);
    copy.fill(hold.file());
    runtime::keepAccess(copy.file(), runtime::accessOf(path));
    copy.putInPlace(runtime::Existing::Refuse);
    return kept;
}

/// Renames the journals of the old store to match the name under which the old store is kept. Under
/// their former names, SQLite would roll them back into the new store.
void moveJournals(const QString& path, const QString& kept)
{
    for (const QString& journal : {rollbackJournal, writeAheadLog}) {
        if (QFileInfo::exists(path + journal))
            runtime::durableMove(path + journal, kept + journal);
    }
}

BackupOutcome outcomeOf(const CheckReport& report)
{
    if (report.preventCopying.isEmpty())
        return {{}, report.findings};
    return {report.preventCopying, {}};
}

BackupOutcome backUpFile(const Place& place, const QString& target)
{
    requireFree(target);
    UnfinishedFile backup(target, runtime::Readers::OnlyOwner);
    const ScratchFolder folder;
    const QString copy = folder.filePath(u"copy.mdb"_s);
    place.open()->CopyTo(copy);
    BackupOutcome outcome = outcomeOf(checkReport(Place(copy), Figures::Skipped));
    if (!outcome.findings.isEmpty())
        return outcome;
    // The backup is written from a temporary copy of the store and not from the store itself, so
    // that stations can use the store meanwhile.
    backup.fill(copy);
    runtime::limitAccess(backup.file(), runtime::accessOf(place.name()));
    backup.putInPlace(runtime::Existing::Refuse);
    return outcome;
}

BackupOutcome backUpDatabase(const Place& place, const QString& target, const RowsOfTable& progress)
{
    requireFree(target);
    const StillStore source(place);
    if (!source.findings().isEmpty())
        return {source.findings(), {}};
    const MadeStore made =
        makeStoreOf(source, target, Identity::OfSource, runtime::Readers::OnlyOwner, progress);
    BackupOutcome outcome =
        outcomeOf(checkReport(Place(made.store->unfinishedPath()), Figures::Skipped));
    if (outcome.findings.isEmpty())
        made.store->putInPlace();
    return outcome;
}

/// Puts the findings of a backup's check into the outcome of a restore. If `oddities` is Refused,
/// every finding prevents the restore. If `oddities` is Accepted, only findings that prevent
/// copying also prevent the restore. If the check has no finding that prevents copying, Accepted
/// turns all findings into notes for the user.
void takeFindings(const CheckReport& report, Oddities oddities, RestoreOutcome& outcome)
{
    if (oddities == Oddities::Refused)
        outcome.findings = report.findings;
    else if (report.preventCopying.isEmpty())
        outcome.notes = report.findings;
    else
        outcome.findings = report.preventCopying;
}

/// Gives the restored file the owner, group and permissions of the store that it replaces. If it
/// replaces no store, gives it the group and permissions of the backup.
void setAccess(UnfinishedFile& file, const Place& backup, const QString& path,
               RestoreOutcome& outcome)
{
    if (!QFileInfo::exists(path)) {
        runtime::limitAccess(file.file(), runtime::accessOf(backup.name()));
        return;
    }
    if (!runtime::keepAccess(file.file(), runtime::accessOf(path)))
        outcome.notes.append(
            say({u"the owner, group or access control list of %1 could not be kept; stations may "
                 "need it",
                 u"אי אפשר היה לשמור את הבעלים, את הקבוצה או את רשימת ההרשאות של %1; בדוק שהעמדות "
                 "יכולות לכתוב בו"},
                path));
}

RestoreOutcome restoreFile(const Place& backup, const QString& name, Oddities oddities)
{
    RestoreOutcome outcome;
    const QString path = runtime::followLinks(name);
    UnfinishedFile restored(path, runtime::Readers::OnlyOwner);
    const ScratchFolder folder;
    const QString copy = folder.filePath(u"copy.mdb"_s);
    backup.open()->CopyTo(copy);
    takeFindings(checkReport(Place(copy), Figures::Skipped), oddities, outcome);
    if (!outcome.findings.isEmpty())
        return outcome;
    renewMarkOf(copy);
    restored.fill(copy);
    Hold hold(path);
    setAccess(restored, backup, path, outcome);
    const bool replaces = QFileInfo::exists(path);
    if (replaces)
        outcome.kept = keep(path, hold);
    if (!hold.isHeld())
        moveJournals(path, replaces ? outcome.kept : freeName(path));
    restored.putInPlace(replaces ? runtime::Existing::Replace : runtime::Existing::Refuse);
    return outcome;
}

RestoreOutcome restoreDatabase(const Place& backup, const Place& place, Oddities oddities,
                               const RowsOfTable& progress)
{
    RestoreOutcome outcome;
    const StillStore source(backup);
    takeFindings(source.check(), oddities, outcome);
    if (!outcome.findings.isEmpty())
        return outcome;
    const auto database = place.open();
    database->BeginTrans();
    const QStringList replaced = storeTablesIn(*database);
    const QStringList grants = dao::grantsOn(*database, replaced);
    dao::actAsOwnerOf(*database, replaced);
    if (!replaced.isEmpty())
        outcome.kept = dao::setAside(*database, replaced);
    const StoreContents contents = source.copyTo(*database, Identity::OfSource, progress);
    createOwnTables(*database);
    dao::applyGrants(*database, grants);
    readBack(*database, contents, progress);
    database->CommitTrans();
    return outcome;
}

} // namespace

BackupOutcome backUpStore(const Place& place, const QString& target, const RowsOfTable& progress)
{
    return place.isOnServer() ? backUpDatabase(place, target, progress) : backUpFile(place, target);
}

RestoreOutcome restoreStore(const Place& backup, const Place& place, Oddities oddities,
                            const RowsOfTable& progress)
{
    return place.isOnServer() ? restoreDatabase(backup, place, oddities, progress)
                              : restoreFile(backup, place.name(), oddities);
}

} // namespace storetools
