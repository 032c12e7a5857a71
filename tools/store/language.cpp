#include "tools/store/language.h"

#include <QLocale>

namespace storetools {

namespace {

Language& chosenLanguage()
{
    static Language chosen = Language::English;
    return chosen;
}

/// Returns the name of the locale for messages, or an empty text if there is none.
QString usersLocaleName()
{
#ifdef Q_OS_WIN
    // On Windows, Qt evaluates only the display language. Scripts may choose a language with
    // LC_ALL, LC_MESSAGES or LANG, as on Linux, so the program reads these environment variables
    // itself.
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const QString name = qEnvironmentVariable(variable); !name.isEmpty())
            return name;
    }
#endif
    return QLocale::system().uiLanguages().value(0);
}

} // namespace

Language language()
{
    return chosenLanguage();
}

void setLanguage(Language language)
{
    chosenLanguage() = language;
}

Language usersLanguage()
{
    const QString name = usersLocaleName();
    const bool isHebrew = !name.isEmpty() && QLocale(name).language() == QLocale::Hebrew;
    return isHebrew ? Language::Hebrew : Language::English;
}

} // namespace storetools
