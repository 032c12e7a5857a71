#include "tools/store/place.h"

#include "platform/dao/database.h"
#include "platform/dao/engines.h"
#include "tools/store/address.h"
#include "tools/store/shared_texts.h"
#include "tools/store/told_error.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

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
        throw ToldError(runtime::PermissionDenied, say(couldNotWrite, path_, link.errorString()));
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
            throw ToldError(runtime::DatabaseExists, say(alreadyExists, each));
    }
}

} // namespace storetools
