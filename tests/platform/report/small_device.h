#pragma once

#include <QIODevice>

#include <algorithm>

namespace testsupport {

/// Takes so many bytes and no more, like a disk that fills up.
class SmallDevice : public QIODevice
{
public:
    explicit SmallDevice(qint64 room) : room_(room) { open(QIODevice::WriteOnly); }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 size) override
    {
        const qint64 taken = std::min(size, room_);
        room_ -= taken;
        return taken > 0 || size == 0 ? taken : -1;
    }

private:
    qint64 room_;
};

} // namespace testsupport
