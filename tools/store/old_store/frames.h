#pragma once

#include "tools/store/old_store/old_format.h"

class QDataStream;
class QIODevice;

namespace storetools {

/// Sends the contents of an old store to another process. Writes each call of a visitor function as
/// one frame (a block of bytes) to a device. A FrameReader in the other process reads the frames.
/// Throws DiskOrNetworkError (3043) if the device does not accept the data.
class FrameWriter : public OldStoreVisitor
{
public:
    explicit FrameWriter(QIODevice& device) : device_(device) {}

    void opened(OldFormat format) override;
    void foreignTable(const QString& name, bool linked) override;
    void table(const OldTable& table) override;
    void row(const OldRow& row) override;
    void tableEnd() override;
    void end() override;

private:
    void write(const QByteArray& frame);
    QIODevice& device_;
};

/// Parses the bytes that a FrameWriter in another process has written. Repeats on a visitor the
/// calls that the FrameWriter has received. The bytes may arrive in pieces of any size. Throws
/// CorruptDatabase (3049) for any byte sequence that a FrameWriter cannot produce.
class FrameReader
{
public:
    explicit FrameReader(OldStoreVisitor& visitor) : visitor_(visitor) {}

    void take(const QByteArray& bytes);
    /// Returns true when the whole stream has been parsed, including its end mark.
    bool isFinished() const { return state_ == State::Finished; }

private:
    enum class State { Start, BetweenTables, InTable, Finished };

    void takeFrame(const QByteArray& frame);
    void takeOpened(QDataStream& stream);
    void takeForeignTable(QDataStream& stream);
    void takeTable(QDataStream& stream);
    void takeRow(QDataStream& stream);

    OldStoreVisitor& visitor_;
    QByteArray waiting_;
    State state_ = State::Start;
    std::size_t columns_ = 0;
};

} // namespace storetools
