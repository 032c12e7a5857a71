#include "tools/store/language.h"

#include <QLocale>

namespace storetools {

namespace {

Language& chosenLanguage()
{
    static Language chosen = Language::English;
    return chosen;
}

/// Returns the name of the locale for messages, or an empty text.
QString usersLocaleName()
{
#ifdef Q_OS_WIN
    // The toolkit knows only the display language there. Scripts set the variables of other
    // systems.
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
