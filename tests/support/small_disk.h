#pragma once

#include <QString>
#include <QTemporaryDir>

namespace testsupport {

/// A file system in memory with the given size in bytes, which a test can fill up. It is visible
/// only to this process and its child processes and disappears with them. Only a process that may
/// mount can create one.
class SmallDisk
{
public:
    explicit SmallDisk(qint64 bytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    /// Returns false if this process may not mount.
    bool isThere() const { return isThere_; }
    QString path() const { return folder_.path(); }

    /// Fills the disk completely.
    void fill() const;
    /// Frees the space that fill has taken.
    void empty() const;

private:
    QTemporaryDir folder_;
    bool isThere_ = false;
};

} // namespace testsupport
