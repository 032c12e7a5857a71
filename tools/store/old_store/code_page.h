#pragma once

#include <QByteArray>
#include <QString>

#include <array>

namespace storetools {

/// A code page in which each character is one byte.
class CodePage
{
public:
    /// By its number, or by a name that the system knows. Raises 5 for one that is unknown or has
    /// characters of several bytes.
    explicit CodePage(const QString& name);

    /// As it was given.
    const QString& name() const { return name_; }
    /// Raises 3421 for a byte that the code page does not know, and names it and its place.
    QString decoded(const QByteArray& bytes) const;

private:
    static constexpr char16_t unknown = 0xffff; // no character, in Unicode either

    QString name_;
    std::array<char16_t, 256> characters_{};
};

} // namespace storetools
