#include "tools/store/backup.h"

#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/checker.h"
#include "tools/store/move.h"
#include "tools/store/unfinished_file.h"

#include <QFileInfo>

#include <filesystem>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

/// File name suffixes of the journals that SQLite keeps beside a database during a change. A
/// journal belongs to exactly one database file.
const QString rollbackJournal = u"-journal"_s;
const QString writeAheadLog = u"-wal"_s;

/// Locks a store against writing by stations while it is replaced. A store that is too damaged to
/// open is not locked, because no station can work with it; it is replaced as well.
class Hold
{
public:
    explicit Hold(const QString& path) : file_(path)
    {
        if (!QFileInfo::exists(path))
            return;
        if (!file_.open(QIODevice::ReadOnly))
            throw RunTimeError(runtime::PermissionDenied,
                               u"Could not read '%1': %2"_s.arg(path, file_.errorString()));
        try {
            database_ = dao::DBEngine::instance().OpenDatabase(path);
            database_->BeginTrans();
        } catch (const RunTimeError& error) {
            if (error.number() != runtime::UnrecognizedFormat &&
                error.number() != runtime::CorruptDatabase)
                throw;
            database_.reset();
        }
        // The changes in the log of a store that stations keep open are not in the file.
        if (isHeld() && QFileInfo::exists(path + writeAheadLog))
            throw RunTimeError(runtime::Locked);
    }
    bool isHeld() const { return database_ != nullptr; }
    /// Returns the file of the store.
    QFile& file() { return file_; }

private:
    /// Closing any descriptor of the file would release the lock, so this one is opened before the
    /// lock is taken and closed after its release. No other one is opened in between.
    QFile file_;
    std::shared_ptr<dao::Database> database_;
};

/// Returns the first name for a kept store that neither a file nor a journal has. A restore that
/// was killed may have left such a name as a second name of the store; it is removed.
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

/// Gives the old store a second file name, which remains after the first name is reused. Copies the
/// file if it cannot have two names. Returns the new name.
QString keep(const QString& path, Hold& hold)
{
    const QString kept = freeName(path);
    if (runtime::durableLink(path, kept) == runtime::Linked::Done)
        return kept;
    UnfinishedFile copy(kept, runtime::Readers::OnlyOwner);
    copy.fill(hold.file());
    runtime::keepAccess(copy.file(), runtime::accessOf(path));
    copy.putInPlace(runtime::Existing::Refuse);
    return kept;
}

/// Moves the journals of the old store along with it. SQLite would otherwise roll an old journal
/// back into the new file.
void moveJournals(const QString& path, const QString& kept)
{
    for (const QString& journal : {rollbackJournal, writeAheadLog}) {
        if (QFileInfo::exists(path + journal))
            runtime::durableMove(path + journal, kept + journal);
    }
}

QStringList backUpFile(const Place& place, const QString& target)
{
    requireFree(target);
    UnfinishedFile backup(target, runtime::Readers::OnlyOwner);
    const ScratchFolder folder;
    const QString copy = folder.filePath(u"copy.mdb"_s);
    place.open()->CopyTo(copy);
    QStringList findings = checkForCopying(copy);
    if (!findings.isEmpty())
        return findings;
    // The store is not locked any more, however long it takes to write the backup.
    backup.fill(copy);
    runtime::limitAccess(backup.file(), runtime::accessOf(place.name()));
    backup.putInPlace(runtime::Existing::Refuse);
    return {};
}

QStringList backUpDatabase(const Place& place, const QString& target, const RowsOfTable& progress)
{
    requireFree(target);
    const StillStore source(place);
    if (!source.findings().isEmpty())
        return source.findings();
    const MadeStore made = makeStoreOf(source, target, runtime::Readers::OnlyOwner, progress);
    QStringList findings = checkForCopying(made.store->unfinishedPath());
    if (findings.isEmpty())
        made.store->putInPlace();
    return findings;
}

/// Gives the new store the access of the one that it replaces, or else that of the backup.
void setAccess(UnfinishedFile& file, const Place& backup, const QString& path,
               RestoreOutcome& outcome)
{
    if (!QFileInfo::exists(path)) {
        runtime::limitAccess(file.file(), runtime::accessOf(backup.name()));
        return;
    }
    if (!runtime::keepAccess(file.file(), runtime::accessOf(path)))
        outcome.notes.append(
            u"the owner or group of %1 could not be kept; stations may need it"_s.arg(path));
}

RestoreOutcome restoreFile(const Place& backup, const QString& name)
{
    RestoreOutcome outcome;
    const QString path = runtime::followLinks(name);
    UnfinishedFile restored(path, runtime::Readers::OnlyOwner);
    const ScratchFolder folder;
    const QString copy = folder.filePath(u"copy.mdb"_s);
    backup.open()->CopyTo(copy);
    outcome.findings = checkForCopying(copy);
    if (!outcome.findings.isEmpty())
        return outcome;
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

RestoreOutcome restoreDatabase(const Place& backup, const Place& place, const RowsOfTable& progress)
{
    RestoreOutcome outcome;
    const StillStore source(backup);
    outcome.findings = source.check();
    if (!outcome.findings.isEmpty())
        return outcome;
    const auto database = place.open();
    database->BeginTrans();
    const QStringList replaced = storeTablesIn(*database);
    const QStringList grants = dao::grantsOn(*database, replaced);
    dao::actAsOwnerOf(*database, replaced);
    if (!replaced.isEmpty())
        outcome.kept = dao::setAside(*database, replaced);
    const StoreContents contents = source.copyTo(*database, progress);
    createOwnTables(*database);
    dao::applyGrants(*database, grants);
    readBack(*database, contents, progress);
    database->CommitTrans();
    return outcome;
}

} // namespace

QStringList backUpStore(const Place& place, const QString& target, const RowsOfTable& progress)
{
    return place.isOnServer() ? backUpDatabase(place, target, progress) : backUpFile(place, target);
}

RestoreOutcome restoreStore(const Place& backup, const Place& place, const RowsOfTable& progress)
{
    return place.isOnServer() ? restoreDatabase(backup, place, progress)
                              : restoreFile(backup, place.name());
}

} // namespace storetools
