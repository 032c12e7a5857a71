#include "tools/store/language.h"

#include <QLocale>

namespace storetools {

namespace {

Language& chosenLanguage()
{
    static Language chosen = Language::English;
    return chosen;
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
    const QStringList languages = QLocale::system().uiLanguages();
    const bool isHebrew =
        !languages.isEmpty() && QLocale(languages.first()).language() == QLocale::Hebrew;
    return isHebrew ? Language::Hebrew : Language::English;
}

} // namespace storetools
