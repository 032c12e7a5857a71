#include "tools/store/scratch_folder.h"

#include "platform/dao/database.h"
#include "platform/runtime/durable_file.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/random_name.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

const QString scratchPrefix = u"zomrel-store-"_s;

} // namespace

void letGoOfFiles()
{
#ifdef Q_OS_WIN
    dao::DBEngine::instance().Idle();
#endif
}

ScratchFolder::ScratchFolder()
{
    createUnderRandomName(QDir::temp().filePath(scratchPrefix), [this](const QString& name) {
        if (!runtime::createFolder(name))
            return false;
        path_ = name;
        mark_ = std::make_unique<runtime::FolderMark>(name);
        return mark_->isValid();
    });
}

void ScratchFolder::removeLeft()
{
    const QStringList left = QDir::temp().entryList(
        {scratchPrefix + u'*'}, QDir::Dirs | QDir::NoSymLinks | QDir::NoDotAndDotDot);
    for (const QString& each : left)
        runtime::removeIfLeft(QDir::temp().filePath(each));
}

ScratchFolder::~ScratchFolder()
{
    letGoOfFiles();
    mark_->removeFolder();
}

} // namespace storetools
