#include "shell/delivered_files.h"

#include <QLibraryInfo>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace shell {

bool loadToolkitTranslation(QTranslator& translator, const QString& folder)
{
    const QString name = u"qtbase_he"_s;
    // With an empty folder, QTranslator would look in the current directory.
    return (!folder.isEmpty() && translator.load(name, folder)) ||
           translator.load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

} // namespace shell
