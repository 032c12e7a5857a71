#pragma once

#include <QByteArray>
#include <QString>

#include <array>

namespace storetools {

/// A single-byte character encoding (code page).
class CodePage
{
public:
    /// Opens the code page with this number, or with an encoding name that iconv knows. Throws
    /// InvalidProcedureCall (5) if the code page is unknown or is not a single-byte encoding.
    explicit CodePage(const QString& name);

    /// Returns the name of the code page that was passed to the constructor.
    const QString& name() const { return name_; }
    /// Decodes a text. Throws DataTypeConversion (3421) for a byte that the code page does not
    /// define. The description contains the byte and its position.
    QString decoded(const QByteArray& bytes) const;

private:
    // The value in `characters_` for a byte that the code page does not define. U+FFFF can have
    // this meaning, because it is never a character.
    static constexpr char16_t unknown = 0xffff;

    QString name_;
    std::array<char16_t, 256> characters_{};
};

} // namespace storetools
