#include "platform/dao/table_copy.h"

#include "platform/dao/database.h"
#include "platform/dao/engine/bulk.h"
#include "platform/dao/engine/session.h"
#include "platform/dao/table_def_p.h"

#include <QCryptographicHash>

namespace dao {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 rowsBetweenNews = 1024;

/// Reads all rows of a table and calls the visitor for each row. Returns the number of rows and a
/// hash of their values.
template <typename Visitor>
TableContents readThrough(Session& session, const TableInfo& table, const RowsSeen& seen,
                          Visitor&& visitor)
{
    QCryptographicHash hash(QCryptographicHash::Blake2b_256);
    TableContents contents;
    const std::unique_ptr<RowStream> stream = session.bulk()->rowStream(table);
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

} // namespace

void beginSnapshot(Database& database)
{
    database.session().beginSnapshot();
}

TableContents copyTable(Database& from, const QString& table, Database& to, const RowsSeen& seen)
{
    Session& source = from.session();
    Session& target = to.session();
    const TableInfo info = source.expectTable(table);
    const auto [before, after] = target.dialect().createTable(info, source.indexes(info.name));
    target.runAll(before);
    const std::unique_ptr<Bulk> bulk = target.bulk();
    const std::unique_ptr<RowSink> sink = bulk->rowSink(info);
    TableContents contents =
        readThrough(source, info, seen, [&](QByteArrayView row) { sink->add(row); });
    sink->finish();
    target.runAll(after);
    for (const FieldInfo& each : info.fields) {
        if (each.counter)
            bulk->countOnFrom(info.name, each.name,
                              source.bulk()->highestGiven(info.name, each.name));
    }
    bulk->analyze(info.name);
    return contents;
}

void makeStoreMark(Database& database)
{
    database.session().storeMark(renewed({}));
}

void keepStoreMark(Database& from, Database& to)
{
    to.session().storeMark(renewed(from.session().storedMark()));
}

QString storeIdentity(Database& database)
{
    return database.session().storedMark().identity;
}

void renewStoreMark(Database& database)
{
    Session& session = database.session();
    Transaction transaction(session);
    session.storeMark(renewed(session.storedMark()));
    transaction.commit();
}

QStringList ownTables(Database& database)
{
    QStringList names;
    for (const TableInfo& each : database.session().tables()) {
        if (each.updatable && isOwnTable(each.name))
            names.append(each.name);
    }
    return names;
}

TableContents readTable(Database& database, const QString& table, const RowsSeen& seen)
{
    Session& session = database.session();
    return readThrough(session, session.expectTable(table), seen, [](QByteArrayView) {});
}

QString setAside(Database& database, const QStringList& tables)
{
    return database.session().bulk()->setAside(tables);
}

void actAsOwnerOf(Database& database, const QStringList& tables)
{
    database.session().bulk()->actAsOwnerOf(tables);
}

QStringList grantsOn(Database& database, const QStringList& tables)
{
    return database.session().bulk()->grantsOn(tables);
}

void applyGrants(Database& database, const QStringList& grants)
{
    database.session().runAll(grants);
}

} // namespace dao
