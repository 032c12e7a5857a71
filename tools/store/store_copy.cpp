#include "tools/store/store_copy.h"

#include "platform/dao/database.h"
#include "tools/store/checker.h"
#include "tools/store/engine_words.h"
#include "tools/store/layout.h"
#include "tools/store/schema_check.h"
#include "tools/store/shared_texts.h"
#include "tools/store/told_error.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

dao::RowsSeen rowsOf(const QString& what, const RowsOfTable& progress)
{
    if (!progress)
        return {};
    return [what, &progress](qint64 rows) { progress(what, rows); };
}

} // namespace

StillStore::StillStore(const Place& place)
    : isOnServer_(place.isOnServer()), database_(place.open())
{
    if (!isOnServer_) {
        const QString copy = folder_.filePath(u"copy.mdb"_s);
        database_->CopyTo(copy);
        database_ = dao::DBEngine::instance().OpenDatabase(copy);
    }
    dao::beginSnapshot(*database_);
    examine();
}

void StillStore::examine()
{
    const Layout layout = layoutOf(*database_);
    findings_ = checkSchema(layout);
    const QStringList own = dao::ownTables(*database_);
    for (const store::TableSchema& each : layout) {
        if (own.contains(each.name))
            continue;
        const store::TableSchema* known = store::tableSchema(each.name);
        if (known != nullptr && known->name == each.name)
            tables_.append(each.name);
        else
            notes_.append(say({u"%1: not a table of the store, not copied",
                               u"הטבלה %1 אינה של התוכנית ולא הועתקה"},
                              each.name));
    }
    // The table with the store's identity is not copied, because copyTo() itself writes an identity
    // to the target.
    tables_ += own;
    tables_.removeAll(dao::storeMarkTable);
}

CheckReport StillStore::check() const
{
    return checkReport(*database_, isOnServer_);
}

StoreContents StillStore::copyTo(dao::Database& target, Identity identity,
                                 const RowsOfTable& progress) const
{
    StoreContents written;
    for (const QString& each : tables_)
        written[each] = dao::copyTable(*database_, each, target, rowsOf(isolated(each), progress));
    if (identity == Identity::New)
        dao::makeStoreMark(target);
    else
        dao::keepStoreMark(*database_, target);
    return written;
}

QStringList storeTablesIn(dao::Database& database)
{
    QStringList found;
    const dao::TableDefs tables = database.tableDefs();
    for (int i = 0; i < tables.Count(); ++i) {
        if (const QString name = tables(i).Name(); store::tableSchema(name) != nullptr)
            found.append(name);
    }
    return found + dao::ownTables(database);
}

void requireNoStore(dao::Database& database)
{
    if (!storeTablesIn(database).isEmpty())
        throw ToldError(runtime::DatabaseExists,
                        say({u"There is a store already in %1.", u"כבר יש נתונים של זומרל: %1."},
                            Phrase{placeInWords(database.place())}),
                        say({u"Choose another database, or restore into this one with zomrel-store "
                             "restore.",
                             u"בחר מסד אחר, או שחזר אל המסד הזה בפקודה {zomrel-store restore}."}));
}

void readBack(dao::Database& database, const StoreContents& written, const RowsOfTable& progress)
{
    for (const auto& [table, contents] : written) {
        if (dao::readTable(database, table, rowsOf(say(readingBack, table), progress)) != contents)
            throw ToldError(runtime::InternalError, say(differsWhenRead, table), say(checkTheDisk));
    }
}

} // namespace storetools
