#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace dao::sqlite {

/// Shows other processes that this process works with a store file. For this purpose the object
/// holds a shared lock on one byte of the file. SQLite does not use this byte. The system releases
/// the lock when the process ends for any reason. A file server releases the lock of a computer
/// that is no longer connected. All connections of the process to one file share one object,
/// because closing any descriptor of the file releases the locks that SQLite holds on the file.
class Presence
{
public:
    /// Returns the Presence object for the file with this identity (see fileIdentityOf). If the
    /// operating system or the file system does not support the lock on the file, the object holds
    /// no lock.
    static std::shared_ptr<Presence> at(const QString& path, const QString& fileIdentity);
    explicit Presence(const QString& path);
    ~Presence();
    Q_DISABLE_COPY_MOVE(Presence)

private:
    qintptr descriptor_ = -1; ///< Descriptor or handle; -1 if the file is not open.
};

/// Returns a text that identifies the file at the path. Another file that replaces this file at the
/// same path has a different text. Returns an empty text if the file is missing or cannot be
/// reached.
QString fileIdentityOf(const QString& path);

/// Returns one line for each process that works with the file. A line contains the number and the
/// name of a process on this computer. If the processes cannot be identified, the function returns
/// a single line for all of them. The list is empty if no process works with the file. This process
/// must not have the file open.
QStringList processesPresentAt(const QString& path);

} // namespace dao::sqlite
