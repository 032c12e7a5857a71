#include "tools/store/words.h"

#include "platform/runtime/direction_marks.h"
#include "tools/store/language.h"

namespace storetools {

QString isolated(const QString& name)
{
    return language() == Language::Hebrew ? runtime::leftToRight(name) : name;
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
            result += runtime::leftToRightIsolate;
        } else if (each == u'}') {
            result += runtime::popIsolate;
        } else {
            result += QChar(each);
        }
    }
    return result;
}

QByteArray withoutIsolation(QByteArray utf8)
{
    for (const QChar mark : {runtime::leftToRightIsolate, runtime::popIsolate})
        utf8.replace(QString(mark).toUtf8(), QByteArray());
    return utf8;
}

} // namespace storetools
