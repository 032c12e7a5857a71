#include "shell/delivered_files.h"

#include "platform/runtime/library_paths.h"

#include <QDir>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace shell {

int loadFonts(const QString& folder)
{
    if (!runtime::isTrustedFolder(folder))
        return 0;
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
    return (runtime::isTrustedFolder(folder) && translator.load(name, folder)) ||
           translator.load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

} // namespace shell
