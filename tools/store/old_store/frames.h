#pragma once

#include "tools/store/old_store/old_format.h"

class QIODevice;

namespace storetools {

/// Writes what it hears to a device, for a FrameReader in another process. Raises 3043 where the
/// device does not take it.
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

/// Takes what a FrameWriter has written, in pieces of any size, and hands it on. It trusts nothing:
/// bytes that no writer writes raise 3049.
class FrameReader
{
public:
    explicit FrameReader(OldStoreVisitor& visitor) : visitor_(visitor) {}

    void take(const QByteArray& bytes);
    /// True once everything was taken, the end included.
    bool isFinished() const { return state_ == State::Finished; }

private:
    enum class State { Start, BetweenTables, InTable, Finished };

    void takeFrame(const QByteArray& frame);
    void takeOpened(quint8 format);

    OldStoreVisitor& visitor_;
    QByteArray waiting_;
    State state_ = State::Start;
    std::size_t columns_ = 0;
};

} // namespace storetools
