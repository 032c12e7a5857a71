#include "tools/store/backup.h"

#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/checker.h"
#include "tools/store/move.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <filesystem>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

namespace fs = std::filesystem;

/// File name suffixes of the journals that SQLite keeps beside a database during a change. A
/// journal belongs to exactly one database file.
const std::array<QString, 2> companions{u"-journal"_s, u"-wal"_s};

fs::path native(const QString& path)
{
    return QFileInfo(path).filesystemFilePath();
}

[[noreturn]] void raise(const QString& path, const std::error_code& error)
{
    throw RunTimeError(
        runtime::PermissionDenied,
        u"Could not write '%1': %2"_s.arg(path, QString::fromLocal8Bit(error.message().c_str())));
}

/// A copy of a store in the folder of its target. The destructor deletes it unless it was moved to
/// the target.
class Copy
{
public:
    Copy(dao::Database& source, const QString& target)
        : target_(target),
          path_(u"%1.%2.part"_s.arg(target).arg(QCoreApplication::applicationPid()))
    {
        source.CopyTo(path_);
    }
    ~Copy() { QFile::remove(path_); }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;

    const QString& path() const { return path_; }

    /// Moves the copy to the target. Throws DatabaseExists (3204) if the target has been created in
    /// the meantime.
    void putInEmptyPlace() const
    {
        if (QFileInfo::exists(target_) || !QFile::rename(path_, target_))
            throw RunTimeError(runtime::DatabaseExists,
                               u"Database '%1' already exists."_s.arg(target_));
    }
    /// Moves the copy to the target atomically, replacing an existing file. The target exists at
    /// every moment.
    void putInPlace() const
    {
        std::error_code error;
        fs::rename(native(path_), native(target_), error);
        if (error)
            raise(target_, error);
    }

private:
    QString target_;
    QString path_;
};

/// Locks a store against writing by stations while it is replaced. A store that is too damaged to
/// open is not locked, because no station can work with it; it is replaced as well.
class Hold
{
public:
    explicit Hold(const QString& path)
    {
        if (!QFileInfo::exists(path))
            return;
        try {
            database_ = dao::DBEngine::instance().OpenDatabase(path);
            database_->BeginTrans();
        } catch (const RunTimeError& error) {
            if (error.number() != runtime::UnrecognizedFormat &&
                error.number() != runtime::CorruptDatabase)
                throw;
            database_.reset();
        }
    }
    bool isHeld() const { return database_ != nullptr; }

private:
    std::shared_ptr<dao::Database> database_;
};

QString freeName(const QString& path)
{
    const QString first = path + u".before-restore"_s;
    QString name = first;
    for (int number = 2; QFileInfo::exists(name); ++number)
        name = u"%1.%2"_s.arg(first).arg(number);
    return name;
}

/// Gives the old store a second file name, which remains after the first name is reused. Copies the
/// file if the file system has no hard links. Returns the new name.
QString keep(const QString& path)
{
    QString kept = freeName(path);
    std::error_code error;
    fs::create_hard_link(native(path), native(kept), error);
    if (error)
        fs::copy_file(native(path), native(kept), error);
    if (error)
        raise(kept, error);
    return kept;
}

/// Moves the journals of the old store along with it. SQLite would otherwise roll an old journal
/// back into the new file.
void moveCompanions(const QString& path, const QString& kept)
{
    for (const QString& companion : companions) {
        if (!QFileInfo::exists(path + companion))
            continue;
        std::error_code error;
        fs::rename(native(path + companion), native(kept + companion), error);
        if (error)
            raise(kept + companion, error);
    }
}

QStringList backUpFile(const Place& place, const QString& target)
{
    const auto source = place.open();
    requireFree(target);
    const Copy copy(*source, target);
    QStringList findings = checkForCopying(copy.path());
    if (findings.isEmpty())
        copy.putInEmptyPlace();
    return findings;
}

QStringList backUpDatabase(const Place& place, const QString& target, const RowsOfTable& progress)
{
    requireFree(target);
    const StillStore source(place);
    if (!source.findings().isEmpty())
        return source.findings();
    const MadeStore made = makeStoreOf(source, target, progress);
    QStringList findings = checkForCopying(made.store->unfinishedPath());
    if (findings.isEmpty())
        made.store->putInPlace();
    return findings;
}

RestoreOutcome restoreFile(const Place& backup, const QString& path)
{
    RestoreOutcome outcome;
    const auto source = backup.open();
    const Copy copy(*source, path);
    source->Close();
    outcome.findings = checkForCopying(copy.path());
    if (!outcome.findings.isEmpty())
        return outcome;
    const Hold hold(path);
    const bool replaces = QFileInfo::exists(path);
    if (replaces) {
        QFile::setPermissions(copy.path(), QFile::permissions(path));
        outcome.kept = keep(path);
    }
    if (!hold.isHeld())
        moveCompanions(path, replaces ? outcome.kept : freeName(path));
    copy.putInPlace();
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
    if (!replaced.isEmpty())
        outcome.kept = dao::setAside(*database, replaced);
    const StoreContents contents = source.copyTo(*database, progress);
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
