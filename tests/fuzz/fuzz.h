#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstring>

/// The two entry points of a fuzz target. libFuzzer or replay.cpp calls the first one once at start
/// and the second one for each input. Each target is a program of its own and belongs to no room.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Aborts the process if a property does not hold, so that the fuzzer saves the input as a finding.
void require(bool holds, const char* property, const QString& input);

/// Consumes an input from its front. At the end of the input, numbers are 0 and texts are empty.
class Input
{
public:
    Input(const std::uint8_t* data, std::size_t size)
        : rest_(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size))
    {
    }

    bool atEnd() const { return rest_.isEmpty(); }

    /// Takes a trivially copyable value from the raw bytes of the input.
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

    /// Takes up to `length` bytes as UTF-8, which may be invalid.
    QString takeText(qsizetype length)
    {
        const QByteArrayView taken = rest_.first(qMin(length, rest_.size()));
        rest_ = rest_.sliced(taken.size());
        return QString::fromUtf8(taken);
    }
    QString takeRest() { return takeText(rest_.size()); }
    /// Takes the rest of the input as raw UTF-16, including unpaired surrogates.
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
