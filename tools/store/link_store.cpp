#include "tools/store/link_store.h"

#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/server_safety.h"
#include "tools/store/shared_texts.h"
#include "tools/store/store_copy.h"
#include "tools/store/told_error.h"
#include "tools/store/unfinished_file.h"

#include <QBuffer>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

void refuseAnythingButALink(const QString& path)
{
    const QFileInfo info(path);
    if ((info.exists() || info.isSymLink()) && !dao::beginsAsLink(path))
        throw ToldError(runtime::DatabaseExists, say(alreadyExists, path));
}

/// Writes the link file durably. A link file that replaces another one gets the owner, group and
/// permissions of the replaced file, as far as the user may set them.
void write(const QString& path, QByteArray text)
{
    const QString place = runtime::followLinks(path);
    const bool replaces = QFileInfo::exists(place);
    UnfinishedFile link(place, runtime::Readers::AsUsual);
    QBuffer contents(&text);
    contents.open(QIODevice::ReadOnly);
    link.fill(contents);
    if (replaces)
        runtime::keepAccess(link.file(), runtime::accessOf(place));
    link.putInPlace(replaces ? runtime::Existing::Replace : runtime::Existing::Refuse);
}

/// Opens the target of a link, before the link is written, through a temporary link file. Returns
/// whether the target is a store.
LinkedTo tried(const dao::Link& link, const QByteArray& text, Hazards hazards)
{
    const ScratchFolder folder;
    const QString path = folder.filePath(u"link"_s);
    write(path, text);
    const auto database = dao::DBEngine::instance().OpenDatabase(path);
    if (hazards == Hazards::Refused)
        requireDurable(*database);
    if (!storeTablesIn(*database).isEmpty())
        return LinkedTo::Store;
    if (link.namesFile())
        throw ToldError(runtime::UnrecognizedFormat, say({u"Unrecognized database format '%1'.",
                                                          u"'%1' אינו קובץ נתונים של זומרל."},
                                                         link.file));
    return LinkedTo::NoStoreYet;
}

} // namespace

LinkedTo linkStore(const QString& path, const dao::Link& link, Hazards hazards)
{
    refuseAnythingButALink(path);
    const QByteArray text = dao::linkText(link);
    const LinkedTo found = tried(link, text, hazards);
    write(path, text);
    return found;
}

} // namespace storetools
