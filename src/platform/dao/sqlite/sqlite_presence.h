#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace dao::sqlite {

/// Shows other processes that this process works with a store file: a shared lock on one byte of
/// the file that SQLite does not use. The system releases the lock when the process ends, however
/// it ends, and a file server releases it for a computer that has gone. All connections of the
/// process to one file share an object, since closing any descriptor of a file releases the locks
/// that SQLite holds on it.
class Presence
{
public:
    /// Returns the object for the file with this identity (see fileIdentityOf). The lock is missing
    /// where the system or the file system has no such locks.
    static std::shared_ptr<Presence> at(const QString& path, const QString& fileIdentity);
    explicit Presence(const QString& path);
    ~Presence();
    Q_DISABLE_COPY_MOVE(Presence)

private:
    qintptr descriptor_ = -1; ///< Descriptor or handle; -1 if the file is not open.
};

/// Returns a text that distinguishes the file at the path from a file that takes its place. Returns
/// an empty text if the file is missing or cannot be reached.
QString fileIdentityOf(const QString& path);

/// Returns one line for each process that works with the file, as far as processes can be told: a
/// process of this computer by its number and name, any others by one line for all. The list is
/// empty if there is none. This process must not have the file open.
QStringList processesPresentAt(const QString& path);

} // namespace dao::sqlite
