#include "tools/store/words.h"

#include "tools/store/language.h"

namespace storetools {

namespace {

constexpr QChar isolateLeftToRight(u'\u2066');
constexpr QChar endOfIsolate(u'\u2069');

} // namespace

QString isolated(const QString& name)
{
    return language() == Language::Hebrew ? isolateLeftToRight + name + endOfIsolate : name;
}

Argument::Argument(const QString& name) : text_(isolated(name)) {}

QString filled(const Text& text, std::span<const Argument> arguments)
{
    const std::u16string_view words =
        language() == Language::Hebrew ? text.hebrew() : text.english();
    QString result;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const char16_t each = words[i];
        const std::size_t number =
            each == u'%' && i + 1 < words.size() ? std::size_t(words[i + 1] - u'0') : 0;
        if (number >= 1 && number <= arguments.size()) {
            result += arguments[number - 1].text();
            ++i;
        } else if (each == u'{') {
            result += isolateLeftToRight;
        } else if (each == u'}') {
            result += endOfIsolate;
        } else {
            result += QChar(each);
        }
    }
    return result;
}

QByteArray withoutIsolation(QByteArray utf8)
{
    for (const QChar mark : {isolateLeftToRight, endOfIsolate})
        utf8.replace(QString(mark).toUtf8(), QByteArray());
    return utf8;
}

} // namespace storetools
