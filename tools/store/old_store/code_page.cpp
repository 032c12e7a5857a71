#include "tools/store/old_store/code_page.h"

#include "tools/store/told_error.h"
#include "tools/store/words.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

/// An iconv conversion descriptor.
class Converter
{
public:
    Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    ~Converter()
    {
        if (isOpen())
            iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool isOpen() const
    {
        // iconv_open returns (iconv_t)-1 on failure.
        return handle_ != reinterpret_cast<iconv_t>(-1); // NOLINT
    }

    enum class Result { Character, Unknown, Incomplete };

    /// Converts a single byte to a character. The bytes of a text are converted one by one, because
    /// iconv may combine adjacent bytes into one character.
    Result convert(char byte, char16_t& character) const
    {
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        std::array<char16_t, 2> output{};
        char* in = &byte;
        auto* out = reinterpret_cast<char*>(output.data());
        std::size_t inLeft = 1;
        std::size_t outLeft = sizeof output;
        if (iconv(handle_, &in, &inLeft, &out, &outLeft) == std::size_t(-1))
            return errno == EINVAL ? Result::Incomplete : Result::Unknown;
        iconv(handle_, nullptr, nullptr, &out, &outLeft);
        character = output[0];
        return outLeft == sizeof output - sizeof(char16_t) ? Result::Character : Result::Unknown;
    }

private:
    iconv_t handle_;
};

/// Returns iconv's name for the code page, such as "CP1255" for the number 1255.
QByteArray systemName(const QString& name)
{
    const bool isNumber = std::ranges::all_of(name, [](QChar each) { return each.isDigit(); });
    return (isNumber ? u"CP"_s + name : name).toLatin1();
}

} // namespace

CodePage::CodePage(const QString& name) : name_(name)
{
    const Converter converter(Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? "UTF-16LE" : "UTF-16BE",
                              systemName(name).constData());
    bool singleBytes = converter.isOpen();
    for (std::size_t i = 0; i < characters_.size() && singleBytes; ++i) {
        characters_[i] = unknown;
        const auto result = converter.convert(static_cast<char>(i), characters_[i]);
        if (result == Converter::Result::Unknown)
            characters_[i] = unknown;
        singleBytes = result != Converter::Result::Incomplete;
    }
    if (!singleBytes)
        throw ToldError(runtime::InvalidProcedureCall,
                        say({u"There is no code page '%1' with a byte for each character.",
                             u"אין דף קוד '%1' עם בית אחד לכל תו."},
                            name));
}

QString CodePage::decoded(const QByteArray& bytes) const
{
    QString text(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (characters_[byte] == unknown)
            throw ToldError(runtime::DataTypeConversion,
                            say({u"byte %1 at %2 is no character of code page %3",
                                 u"הבית %1 במקום %2 אינו תו בדף הקוד %3"},
                                byte, i + 1, name_));
        text[i] = QChar(characters_[byte]);
    }
    return text;
}

} // namespace storetools
