// Copies a store while other stations use it.

#include "platform/dao/sqlite/sqlite_bulk.h"

#include <QFile>
#include <QSaveFile>

namespace dao::sqlite {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

constexpr qint64 blockSize = 1 << 20;

/// A read lock on the store file: other stations can read but not write.
class ReadLock
{
public:
    explicit ReadLock(Session& session) : session_(session)
    {
        session_.run(u"BEGIN"_s);
        try {
            // SQLite takes the lock at the first read. This read also rolls back an unfinished
            // transaction of a station that has crashed.
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
    // Closing a file releases all POSIX locks that the process holds on it. Therefore the file is
    // opened before the lock is taken and closed after the lock is released.
    QFile store(session_.name());
    if (!store.open(QIODevice::ReadOnly))
        throw RunTimeError(runtime::PermissionDenied);
    QSaveFile copy(path);
    if (!copy.open(QIODevice::WriteOnly))
        throw RunTimeError(runtime::PermissionDenied,
                           u"Could not write '%1': %2"_s.arg(path, copy.errorString()));
    {
        const ReadLock lock(session_);
        // With a write-ahead log, the latest changes are not in the store file.
        if (session_.rows(u"PRAGMA journal_mode"_s).front().front().toString() == "wal"_L1)
            throw RunTimeError(runtime::Locked);
        copyAll(store, copy);
    }
    // Stations need not wait until the copy is on the disk.
    if (!copy.commit())
        throw writingError(copy);
}

} // namespace dao::sqlite
