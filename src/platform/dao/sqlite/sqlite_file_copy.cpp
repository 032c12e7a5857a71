// Copies the file of an embedded store while other stations use the store.

#include "platform/dao/sqlite/sqlite_bulk.h"

#include <QFile>
#include <QSaveFile>

namespace dao::sqlite {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

constexpr qint64 blockSize = 1 << 20;

/// Holds a read lock on the store file. Other stations can then read the store but not write to it.
class ReadLock
{
public:
    explicit ReadLock(Session& session) : session_(session)
    {
        session_.run(u"BEGIN"_s);
        try {
            // SQLite locks the store at the first read after BEGIN, so the program reads once. If a
            // station has crashed during a transaction, this read also rolls back the unfinished
            // transaction.
            session_.rows(u"SELECT count(*) FROM sqlite_master"_s);
        } catch (const RunTimeError&) {
            release();
            throw;
        }
    }
    ~ReadLock() { release(); }
    Q_DISABLE_COPY_MOVE(ReadLock)

private:
    void release()
    {
        try {
            session_.run(u"ROLLBACK"_s);
        } catch (const RunTimeError&) {
            // SQLite has already released the lock.
            return;
        }
    }

    Session& session_;
};

RunTimeError writingError(const QSaveFile& file)
{
    const int number = file.error() == QFileDevice::ResourceError ? runtime::DiskFull
                                                                  : runtime::DiskOrNetworkError;
    return RunTimeError(number,
                        u"Could not write '%1': %2"_s.arg(file.fileName(), file.errorString()));
}

void copyAll(QFile& store, QSaveFile& copy)
{
    while (!store.atEnd()) {
        const QByteArray block = store.read(blockSize);
        if (block.isEmpty())
            throw RunTimeError(runtime::DiskOrNetworkError);
        if (copy.write(block) != block.size())
            throw writingError(copy);
    }
}

} // namespace

void SqliteBulk::copyTo(const QString& path)
{
    // When a process closes a file, the system releases all POSIX locks that the process holds on
    // the file. Therefore the store file is opened before the lock is taken and closed after the
    // lock is released.
    QFile store(session_.name());
    if (!store.open(QIODevice::ReadOnly))
        throw RunTimeError(runtime::PermissionDenied);
    QSaveFile copy(path);
    if (!copy.open(QIODevice::WriteOnly))
        throw RunTimeError(runtime::PermissionDenied,
                           u"Could not write '%1': %2"_s.arg(path, copy.errorString()));
    {
        const ReadLock lock(session_);
        // If the store has a write-ahead log, the latest changes are in the log and not in the
        // store file. Copying the file is therefore refused.
        if (session_.rows(u"PRAGMA journal_mode"_s).front().front().toString() == "wal"_L1)
            throw RunTimeError(runtime::Locked);
        copyAll(store, copy);
    }
    // QSaveFile::commit writes the copy to the disk. The lock on the store is released before this
    // call, so that other stations need not wait for the disk.
    if (!copy.commit())
        throw writingError(copy);
}

} // namespace dao::sqlite
