#include "tools/store/link_store.h"

#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/store_copy.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

[[noreturn]] void cannotWrite(const QString& path, const QString& reason)
{
    throw RunTimeError(runtime::PermissionDenied, u"Could not write '%1': %2"_s.arg(path, reason));
}

void refuseAnythingButALink(const QString& path)
{
    const QFileInfo info(path);
    if ((info.exists() || info.isSymLink()) && !dao::beginsAsLink(path))
        throw RunTimeError(runtime::DatabaseExists, u"Database '%1' already exists."_s.arg(path));
}

void write(const QString& path, const QByteArray& text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
        cannotWrite(path, file.errorString());
}

LinkedTo tried(const QByteArray& text)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"link"_s);
    write(path, text);
    const auto database = dao::DBEngine::instance().OpenDatabase(path);
    return storeTablesIn(*database).isEmpty() ? LinkedTo::NoStoreYet : LinkedTo::Store;
}

} // namespace

LinkedTo linkStore(const QString& path, const dao::Link& link)
{
    refuseAnythingButALink(path);
    const QByteArray text = dao::linkText(link);
    const LinkedTo found = tried(text);
    write(path, text);
    return found;
}

} // namespace storetools
