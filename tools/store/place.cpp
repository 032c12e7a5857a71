#include "tools/store/place.h"

#include "platform/dao/database.h"
#include "platform/dao/engines.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/address.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

QString defaultStore()
{
    return u"Aluminium.mdb"_s;
}

Place::Place(const QString& name) : name_(name), path_(name)
{
    if (!isAddress(name)) {
        const std::optional<dao::Link> link = dao::linkAt(name);
        isOnServer_ = link && !link->namesFile();
        if (link && link->namesFile())
            name_ = path_ = dao::linkedFile(*link, name);
        return;
    }
    isOnServer_ = true;
    const QByteArray text = dao::linkText(parseAddress(name));
    folder_ = std::make_unique<ScratchFolder>();
    path_ = folder_->filePath(u"link"_s);
    QFile link(path_);
    if (!link.open(QIODevice::WriteOnly) || link.write(text) != text.size())
        throw RunTimeError(runtime::PermissionDenied,
                           u"Could not write '%1': %2"_s.arg(path_, link.errorString()));
}

std::shared_ptr<dao::Database> Place::open() const
{
    return dao::DBEngine::instance().OpenDatabase(path_);
}

QStringList Place::stations() const
{
    return dao::connectedStations(path_);
}

void requireFree(const QString& path)
{
    for (const QString& each : {path, path + u"-journal"_s, path + u"-wal"_s}) {
        const QFileInfo info(each);
        if (info.exists() || info.isSymLink())
            throw RunTimeError(runtime::DatabaseExists,
                               u"Database '%1' already exists."_s.arg(each));
    }
}

} // namespace storetools
