#pragma once

#include <QString>

#include <array>
#include <concepts>
#include <span>
#include <string_view>

/// The message texts of zomrel-store, each in English and in Hebrew.
namespace storetools {

constexpr bool isHebrewLetter(char16_t character)
{
    return character >= u'\u05d0' && character <= u'\u05ea';
}

/// Returns true if the two texts can be the same message in English and in Hebrew: only the Hebrew
/// text contains Hebrew letters, both texts contain the same placeholders %1 to %9, and every Latin
/// letter of the Hebrew text is in braces.
constexpr bool isTranslation(std::u16string_view english, std::u16string_view hebrew)
{
    std::array<int, 10> placeholders{};
    for (std::size_t i = 0; i + 1 < english.size(); ++i) {
        if (english[i] == u'%' && english[i + 1] >= u'1' && english[i + 1] <= u'9')
            ++placeholders[std::size_t(english[i + 1] - u'0')];
    }
    for (const char16_t each : english) {
        if (isHebrewLetter(each) || each == u'{' || each == u'}')
            return false;
    }
    bool hasHebrew = false;
    bool isInBraces = false;
    for (std::size_t i = 0; i < hebrew.size(); ++i) {
        const char16_t each = hebrew[i];
        const bool isLatin = (each >= u'a' && each <= u'z') || (each >= u'A' && each <= u'Z');
        if ((isLatin && !isInBraces) || (each == u'{' && isInBraces) ||
            (each == u'}' && !isInBraces))
            return false;
        if (each == u'{' || each == u'}')
            isInBraces = each == u'{';
        hasHebrew = hasHebrew || isHebrewLetter(each);
        if (each == u'%' && i + 1 < hebrew.size() && hebrew[i + 1] >= u'1' && hebrew[i + 1] <= u'9')
            --placeholders[std::size_t(hebrew[i + 1] - u'0')];
    }
    return hasHebrew && !isInBraces && placeholders == std::array<int, 10>{};
}

/// A message in English and in Hebrew, with placeholders %1 to %9. In the Hebrew text, braces
/// enclose commands, options and other Latin words; the output has direction marks instead of the
/// braces. Two texts that fail isTranslation() do not compile.
class Text
{
public:
    consteval Text(const char16_t* english, const char16_t* hebrew)
        : english_(english), hebrew_(hebrew)
    {
        if (!isTranslation(english, hebrew))
            throw "the Hebrew text is not the translation of the English one";
    }
    constexpr std::u16string_view english() const { return english_; }
    constexpr std::u16string_view hebrew() const { return hebrew_; }

private:
    const char16_t* english_;
    const char16_t* hebrew_;
};

/// A text in the user's language that replaces a placeholder of a message. It has the direction of
/// the message, so it needs no direction marks.
struct Phrase
{
    QString text;
};

/// A value that replaces a placeholder of a message. In a Hebrew message, direction marks enclose a
/// path, a name or a number, so that it keeps its own direction. A Phrase gets no direction marks,
/// because its words are Hebrew.
class Argument
{
public:
    Argument(const QString& name);
    Argument(const Phrase& phrase) : text_(phrase.text) {}
    template <std::integral Number>
    Argument(Number number) : Argument(QString::number(number))
    {
    }
    const QString& text() const { return text_; }

private:
    QString text_;
};

/// Returns a name for use inside a Hebrew text, enclosed in the marks that isolate left-to-right
/// text (U+2066 and U+2069). If the user's language is English, returns the name unchanged.
QString isolated(const QString& name);

QString filled(const Text& text, std::span<const Argument> arguments);

/// Returns the message in the user's language.
template <typename... Each>
QString say(const Text& text, const Each&... arguments)
{
    const std::array<Argument, sizeof...(Each)> all{Argument(arguments)...};
    return filled(text, all);
}

/// Removes the marks U+2066 and U+2069, which isolated() adds, from a UTF-8 text.
QByteArray withoutIsolation(QByteArray utf8);

} // namespace storetools
