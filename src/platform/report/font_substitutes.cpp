#include "platform/report/font_substitutes.h"

#include "platform/runtime/library_paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFont>
#include <QFontDatabase>
#include <QStringList>

namespace report {

using namespace Qt::StringLiterals;

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

void loadDeliveredFonts()
{
    loadFonts(QCoreApplication::applicationDirPath() + u"/fonts"_s);
}

void substituteFonts()
{
    QFont::insertSubstitutions(u"David"_s,
                               {u"David CLM"_s, u"Frank Ruehl CLM"_s, u"DejaVu Sans"_s});
    for (const QString& sans : {u"Arial"_s, u"MS Sans Serif"_s})
        QFont::insertSubstitutions(sans, {u"Nachlieli CLM"_s, u"DejaVu Sans"_s});
}

} // namespace report
