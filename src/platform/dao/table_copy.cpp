#include "platform/dao/table_copy.h"

#include "platform/dao/database.h"
#include "platform/dao/engine/bulk.h"
#include "platform/dao/engine/session.h"
#include "platform/dao/table_def_p.h"

#include <QCryptographicHash>

#include <algorithm>

namespace dao {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 rowsBetweenNews = 1024;

TableInfo expectTableOf(Driver& driver, const QString& name)
{
    std::optional<TableInfo> table = driver.table(name);
    if (!table)
        throw runtime::RunTimeError(runtime::TableNotFound);
    return std::move(*table);
}

/// Goes over all rows of a table, which the visitor sees one by one.
template <typename Visitor>
TableContents readThrough(Driver& driver, const TableInfo& table, const RowsSeen& seen,
                          Visitor&& visitor)
{
    QCryptographicHash hash(QCryptographicHash::Blake2b_256);
    TableContents contents;
    const std::unique_ptr<RowStream> stream = driver.rowStream(table);
    while (const std::optional<QByteArrayView> row = stream->next()) {
        hash.addData(*row);
        visitor(*row);
        ++contents.rows;
        if (seen && contents.rows % rowsBetweenNews == 0)
            seen(contents.rows);
    }
    contents.digest = hash.result();
    return contents;
}

/// Indexes, counters and the like cost less where the rows are there already.
struct Making
{
    QStringList before; ///< What rows need to be stored.
    QStringList after;
};

Making makingOf(const Driver& driver, const TableInfo& table, const std::vector<IndexInfo>& indexes)
{
    QStringList all = driver.createTable(table, indexes);
    const auto making = std::find_if(all.begin(), all.end(), [](const QString& each) {
        return each.startsWith("CREATE TABLE"_L1);
    });
    const qsizetype count = std::distance(all.begin(), making) + 1;
    return {all.first(count), all.sliced(count)};
}

void runAll(Driver& driver, const QStringList& statements)
{
    for (const QString& each : statements)
        driver.run(each);
}

} // namespace

void holdStill(Database& database)
{
    database.driver().beginReading();
}

TableContents copyTable(Database& from, const QString& table, Database& to, const RowsSeen& seen)
{
    Driver& source = from.driver();
    Driver& target = to.driver();
    const TableInfo info = expectTableOf(source, table);
    const Making making = makingOf(target, info, source.indexes(info.name));
    runAll(target, making.before);
    const std::unique_ptr<RowSink> sink = target.rowSink(info);
    TableContents contents =
        readThrough(source, info, seen, [&](QByteArrayView row) { sink->add(row); });
    sink->finish();
    runAll(target, making.after);
    for (const FieldInfo& each : info.fields) {
        if (each.counter)
            target.countOnFrom(info.name, each.name, source.highestGiven(info.name, each.name));
    }
    target.learnContents(info.name);
    return contents;
}

QStringList ownTables(Database& database)
{
    QStringList names;
    for (const TableInfo& each : database.driver().tables()) {
        if (each.updatable && isOwnTable(each.name))
            names.append(each.name);
    }
    return names;
}

TableContents readTable(Database& database, const QString& table, const RowsSeen& seen)
{
    Driver& driver = database.driver();
    return readThrough(driver, expectTableOf(driver, table), seen, [](QByteArrayView) {});
}

QString setAside(Database& database, const QStringList& tables)
{
    return database.driver().setAside(tables);
}

} // namespace dao
