// Copying a store that other stations work on.

#include "platform/dao/sqlite/sqlite_bulk.h"

#include <QFile>
#include <QSaveFile>

namespace dao::sqlite {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

constexpr qint64 blockSize = 1 << 20;

/// Keeps writers out of the file, and only them, for as long as it lives.
class ReadLock
{
public:
    explicit ReadLock(Session& session) : session_(session)
    {
        session_.run(u"BEGIN"_s);
        try {
            // The lock comes with the first reading, which also undoes what a station that was
            // cut off has left half-made.
            session_.rows(u"SELECT count(*) FROM sqlite_master"_s);
        } catch (const RunTimeError&) {
            release();
            throw;
        }
    }
    ~ReadLock() { release(); }
    ReadLock(const ReadLock&) = delete;
    ReadLock& operator=(const ReadLock&) = delete;

private:
    void release()
    {
        try {
            session_.run(u"ROLLBACK"_s);
        } catch (const RunTimeError&) {
            // The engine has let go by itself.
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

} // namespace

void SqliteBulk::copyTo(const QString& path)
{
    // Closing the file lets go of every lock that this process holds on it, so it is opened before
    // the lock is taken and closed after.
    QFile store(session_.name());
    if (!store.open(QIODevice::ReadOnly))
        throw RunTimeError(runtime::PermissionDenied);
    QSaveFile copy(path);
    if (!copy.open(QIODevice::WriteOnly))
        throw RunTimeError(runtime::PermissionDenied,
                           u"Could not write '%1': %2"_s.arg(path, copy.errorString()));
    const ReadLock lock(session_);
    // With a journal of this kind the file alone is not the store.
    if (session_.rows(u"PRAGMA journal_mode"_s).front().front().toString() == "wal"_L1)
        throw RunTimeError(runtime::Locked);
    while (!store.atEnd()) {
        const QByteArray block = store.read(blockSize);
        if (block.isEmpty())
            throw RunTimeError(runtime::DiskOrNetworkError);
        if (copy.write(block) != block.size())
            throw writingError(copy);
    }
    if (!copy.commit())
        throw writingError(copy);
}

} // namespace dao::sqlite
