#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstring>

/// The two entries of a fuzz target, which libFuzzer or the replaying main calls: one before the
/// first input, one for each input. They are no part of a room: a target is a program of its own.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Ends the process where a property does not hold, so that the input is kept as a finding.
void require(bool holds, const char* property, const QString& input);

/// An input taken apart from its front. Where it has ended, the rest are zeros and empty texts.
class Input
{
public:
    Input(const std::uint8_t* data, std::size_t size)
        : rest_(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size))
    {
    }

    bool atEnd() const { return rest_.isEmpty(); }

    /// A number, a character or the like by its bytes, whatever value they make.
    template <typename Plain>
    Plain take()
    {
        Plain value{};
        const qsizetype size = qMin(rest_.size(), static_cast<qsizetype>(sizeof value));
        std::memcpy(&value, rest_.constData(), static_cast<std::size_t>(size));
        rest_ = rest_.sliced(size);
        return value;
    }

    int takeBelow(int limit) { return take<std::uint8_t>() % limit; }

    /// A text of so many bytes as UTF-8, which need not be sound.
    QString takeText(qsizetype length)
    {
        const QByteArrayView taken = rest_.first(qMin(length, rest_.size()));
        rest_ = rest_.sliced(taken.size());
        return QString::fromUtf8(taken);
    }
    QString takeRest() { return takeText(rest_.size()); }
    /// The rest as UTF-16 as it lies there, lone halves of pairs included.
    QString takeRestAsUtf16()
    {
        QString text(rest_.size() / 2, Qt::Uninitialized);
        std::memcpy(text.data(), rest_.constData(), static_cast<std::size_t>(text.size()) * 2);
        rest_ = {};
        return text;
    }

private:
    QByteArrayView rest_;
};

} // namespace fuzz
