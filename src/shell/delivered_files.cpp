#include "shell/delivered_files.h"

#include "platform/runtime/library_paths.h"

#include <QLibraryInfo>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace shell {

bool loadToolkitTranslation(QTranslator& translator, const QString& folder)
{
    const QString name = u"qtbase_he"_s;
    return (runtime::isTrustedFolder(folder) && translator.load(name, folder)) ||
           translator.load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

} // namespace shell
