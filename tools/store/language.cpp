#include "tools/store/language.h"

#include <QLocale>

namespace storetools {

bool speaksHebrew()
{
    static const bool isHebrew = [] {
        const QStringList languages = QLocale::system().uiLanguages();
        return !languages.isEmpty() && QLocale(languages.first()).language() == QLocale::Hebrew;
    }();
    return isHebrew;
}

QString inUsersLanguage(const QString& english, const QString& hebrew)
{
    return speaksHebrew() ? hebrew : english;
}

} // namespace storetools
