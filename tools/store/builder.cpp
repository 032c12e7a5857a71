#include "tools/store/builder.h"

#include "platform/dao/database.h"
#include "store/schema.h"
#include "tools/store/contents.h"
#include "tools/store/new_store.h"

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

void fillTable(dao::Database& database, const TableContents& contents)
{
    const auto recordset = database.OpenRecordset(contents.table, dao::dbOpenTable);
    for (const QStringList& row : contents.rows) {
        recordset->AddNew();
        for (qsizetype i = 0; i < row.size(); ++i) {
            if (!row[i].isEmpty())
                recordset->Fields(contents.fields[i]).SetValue(row[i]);
        }
        recordset->Update();
    }
}

} // namespace

QString deliveredContents()
{
    return u":/zomrel-store"_s;
}

void createStore(const QString& path, const QString& contents)
{
    NewStore store(path);
    if (!contents.isEmpty()) {
        for (const store::TableSchema& table : store::schema())
            fillTable(store.database(), readContents(contents, table.name));
    }
    store.save();
    store.putInPlace();
}

} // namespace storetools
