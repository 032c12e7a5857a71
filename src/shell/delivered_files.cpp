#include "shell/delivered_files.h"

#include <QDir>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace shell {

int loadFonts(const QString& folder)
{
    int loaded = 0;
    for (const QFileInfo& font :
         QDir(folder).entryInfoList({u"*.otf"_s, u"*.ttf"_s}, QDir::Files, QDir::Name)) {
        if (QFontDatabase::addApplicationFont(font.filePath()) >= 0)
            ++loaded;
    }
    return loaded;
}

bool loadToolkitTranslation(QTranslator& translator, const QString& folder)
{
    const QString name = u"qtbase_he"_s;
    // With an empty folder, QTranslator would look in the current directory.
    return (!folder.isEmpty() && translator.load(name, folder)) ||
           translator.load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

} // namespace shell
