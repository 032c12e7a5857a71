#pragma once

#include <QString>
#include <QTemporaryDir>

namespace testsupport {

/// A disk of so many bytes, in memory, which can be filled. It is seen by this process and those
/// that it starts, and goes with them. Only who may mount gets one.
class SmallDisk
{
public:
    explicit SmallDisk(qint64 bytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    /// False where this process may not mount.
    bool isThere() const { return isThere_; }
    QString path() const { return folder_.path(); }

    /// Leaves no room for anything.
    void fill() const;
    /// Gives the room back.
    void empty() const;

private:
    QTemporaryDir folder_;
    bool isThere_ = false;
};

} // namespace testsupport
